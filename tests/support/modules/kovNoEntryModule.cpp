// A shared object that is not a module: it exports no entry point.
extern "C" __attribute__((visibility("default"))) int kovNotAModule()
{
  return 42;
}
