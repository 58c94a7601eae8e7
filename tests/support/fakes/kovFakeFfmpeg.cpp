// A stand-in for ffmpeg, named ffmpeg in a folder of its own, that behaves as
// the environment variable KOV_FAKE_FFMPEG says:
//   success  writes its last argument (the output) and ends with 0
//   failure  says why on its error output and ends with 1, writing nothing
//   crash    dies of a signal
//   hang     never ends by itself
// It also leaves its arguments, one a line, in fake-ffmpeg-arguments.txt of
// the folder it runs in.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

int main(int argc, char** argv)
{
  if (std::FILE* record = std::fopen("fake-ffmpeg-arguments.txt", "w")) {
    for (int i = 1; i < argc; ++i)
      std::fprintf(record, "%s\n", argv[i]);
    std::fclose(record);
  }
  const char* mode = std::getenv("KOV_FAKE_FFMPEG");
  if (!mode || std::strcmp(mode, "success") == 0) {
    std::FILE* output = argc > 1 ? std::fopen(argv[argc - 1], "wb") : nullptr;
    if (!output)
      return 2;
    std::fputs("not a real clip", output);
    std::fclose(output);
    return 0;
  }
  if (std::strcmp(mode, "failure") == 0) {
    std::fputs("[vost#0:0] Unknown encoder 'h264'\nError selecting an encoder\n", stderr);
    return 1;
  }
  if (std::strcmp(mode, "crash") == 0) {
    std::fputs("about to crash\n", stderr);
    std::fflush(stderr);
    std::abort();
  }
  for (;;)
    std::this_thread::sleep_for(std::chrono::seconds(1));
}
