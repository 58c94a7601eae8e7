// kovhost: the reference host of the animation module.
//
//   kovhost [--settings FILE] [DRAWING]            the desktop application
//   kovhost --headless [--script FILE | -c LINE ...] [DRAWING]
//                                                  command lines without windows
#include "host/app/kovDesktop.h"
#include "host/app/kovHeadlessRunner.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostCommands.h"
#include "host/app/kovHostServices.h"

#include "Db/OdDbFileReader.h"
#include "Db/OdDbModule.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

#include <cstring>

namespace {

bool wantsHeadless(int argc, char** argv)
{
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--headless") == 0)
      return true;
  }
  return false;
}

} // namespace

int main(int argc, char* argv[])
{
  // Without windows there may be no display either.
  if (wantsHeadless(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("The reference host of the animation module."));
  parser.addHelpOption();
  parser.addOption({ QStringLiteral("headless"), QStringLiteral("Run command lines without windows.") });
  parser.addOption({ QStringLiteral("script"), QStringLiteral("Run the command lines of FILE."), QStringLiteral("FILE") });
  parser.addOption({ QStringLiteral("c"), QStringLiteral("Run one command line (repeatable)."), QStringLiteral("LINE") });
  parser.addOption({ QStringLiteral("settings"), QStringLiteral("Keep the settings in FILE."), QStringLiteral("FILE") });
  parser.addPositionalArgument(QStringLiteral("drawing"), QStringLiteral("The drawing to open."));

  QStringList arguments;
  for (int i = 0; i < argc; ++i)
    arguments << QString::fromLocal8Bit(argv[i]);
  parser.parse(arguments);
  kovHostApplication app(argc, argv, parser.value(QStringLiteral("settings")));
  parser.process(app);
  QTextStream err(stderr);

  odInitialize();
  int exitCode = 0;
  {
    kovHostServices services;
    kovHostCommands commands;
    QString message;
    if (!app.loadAnimationModule(message))
      err << "kovhost: the animation module was not loaded: " << message << '\n';

    const QStringList positional = parser.positionalArguments();
    try {
      if (positional.isEmpty()) {
        app.setDatabase(OdDbDatabase::createObject(), QString());
      } else {
        const QString path = QFileInfo(positional.first()).absoluteFilePath();
        app.setDatabase(OdDbFileReader::readFile(odFromQString(path)), path);
      }
    } catch (const OdError& error) {
      err << "kovhost: " << odToQString(error.description()) << '\n';
      exitCode = 1;
    }

    if (exitCode == 0 && parser.isSet(QStringLiteral("headless"))) {
      kovHeadlessRunner runner(app, services);
      QStringList lines = parser.values(QStringLiteral("c"));
      if (parser.isSet(QStringLiteral("script"))) {
        QStringList scriptLines;
        if (!kovHeadlessRunner::readScript(parser.value(QStringLiteral("script")), scriptLines, message)) {
          err << "kovhost: " << message << '\n';
          exitCode = 1;
        }
        lines = scriptLines + lines;
      }
      if (exitCode == 0) {
        if (lines.isEmpty())
          runner.describe();
        else
          exitCode = runner.run(lines);
      }
    } else if (exitCode == 0) {
      exitCode = runDesktop(app, services);
    }
    app.unloadAnimationModule();
  }
  odUninitialize();
  return exitCode;
}
