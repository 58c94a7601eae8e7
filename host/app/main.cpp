#include "Rx/OdError.h"
#include "Rx/OdRxDynamicLinker.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

int main(int argc, char* argv[])
{
  QCoreApplication app(argc, argv);
  QTextStream out(stdout);
  QTextStream err(stderr);
  const OdString moduleName(L"kovAnimationModule");
  try {
    odrxDynamicLinker()->addSearchPath(odFromQString(QCoreApplication::applicationDirPath()));
    OdRxModulePtr module = odrxDynamicLinker()->loadModule(moduleName, false);
    out << "Loaded module " << odToQString(module->moduleName()) << "\n";
    module.release();
    odrxDynamicLinker()->unloadModule(moduleName);
  } catch (const OdError& error) {
    err << "kovhost: " << odToQString(error.description()) << "\n";
    return 1;
  }
  return 0;
}
