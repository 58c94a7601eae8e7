// kovhost: the reference host of the animation module.
//
//   kovhost [--settings FILE] [--script FILE ...] [-c LINE ...] [DRAWING]
//                                                  the desktop application, the
//                                                  lines typed in once it is up
//   kovhost --headless [--script FILE ...] [-c LINE ...] [DRAWING]
//                                                  command lines without windows
//   kovhost --headless --produce [--animation NAME] [--cut N] [--output DIR]
//           [--script FILE ...] [-c LINE ...] [DRAWING]
//                                                  the lines, then a production of
//                                                  the cut; exit code 0 when it is whole
#include "host/app/kovDesktop.h"
#include "host/app/kovHeadlessRunner.h"
#include "host/app/kovHostApplication.h"
#include "host/app/kovHostClasses.h"
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
    if (std::strcmp(argv[i], "--headless") == 0 || std::strcmp(argv[i], "--produce") == 0)
      return true;
  }
  return false;
}

// A script word that stands for text as it is: quoted, its quotes doubled.
QString quoted(const QString& text)
{
  return QLatin1Char('"') + QString(text).replace(QLatin1String("\""), QLatin1String("\"\"")) + QLatin1Char('"');
}

// The lines that produce the cut --produce asks for: the animation made the
// editing one, then the production.
bool productionLines(const QCommandLineParser& parser, QStringList& lines, QString& message)
{
  if (parser.isSet(QStringLiteral("animation")))
    lines << QStringLiteral("animationselect ") + quoted(parser.value(QStringLiteral("animation")));
  bool ok = true;
  const int cut = parser.isSet(QStringLiteral("cut")) ? parser.value(QStringLiteral("cut")).toInt(&ok) : 1;
  if (!ok || cut < 1) {
    message = QStringLiteral("--cut takes a camera cut's number, 1 for the first: %1 is none")
                  .arg(parser.value(QStringLiteral("cut")));
    return false;
  }
  lines << QStringLiteral("animationproduce %1 %2")
               .arg(cut)
               .arg(quoted(parser.isSet(QStringLiteral("output"))
                               ? QFileInfo(parser.value(QStringLiteral("output"))).absoluteFilePath()
                               : QString()));
  return true;
}

// The scripts' lines, in the order given, then the single lines; false, with
// the reason in message, when a script can't be read.
bool commandLines(const QCommandLineParser& parser, QStringList& lines, QString& message)
{
  for (const QString& script : parser.values(QStringLiteral("script"))) {
    QStringList scriptLines;
    if (!kovHeadlessRunner::readScript(script, scriptLines, message))
      return false;
    lines += scriptLines;
  }
  lines += parser.values(QStringLiteral("c"));
  return true;
}

int runHeadless(kovHostApplication& app, kovHostServices& services, const QStringList& lines,
                const QString& drawing)
{
  QTextStream err(stderr);
  QString message;
  if (!app.loadAnimationModule(message))
    err << "kovhost: the animation module was not loaded: " << message << '\n';
  try {
    if (drawing.isEmpty()) {
      app.setDatabase(OdDbDatabase::createObject(), QString());
    } else {
      const QString path = QFileInfo(drawing).absoluteFilePath();
      app.setDatabase(OdDbFileReader::readFile(odFromQString(path)), path);
    }
  } catch (const OdError& error) {
    err << "kovhost: " << odToQString(error.description()) << '\n';
    return 1;
  }

  kovHeadlessRunner runner(app, services);
  if (lines.isEmpty()) {
    runner.describe();
    return 0;
  }
  return runner.run(lines);
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
  parser.addOption({ QStringLiteral("script"), QStringLiteral("Run the command lines of FILE (may be given more than once)."), QStringLiteral("FILE") });
  parser.addOption({ QStringLiteral("c"), QStringLiteral("Run one command line (repeatable)."), QStringLiteral("LINE") });
  parser.addOption({ QStringLiteral("settings"), QStringLiteral("Keep the settings in FILE."), QStringLiteral("FILE") });
  parser.addOption({ QStringLiteral("produce"),
                     QStringLiteral("Without windows, produce a camera cut of the drawing's animation after the "
                                    "lines.") });
  parser.addOption({ QStringLiteral("animation"), QStringLiteral("The animation to produce (default: the one the lines made last, else the first)."),
                     QStringLiteral("NAME") });
  parser.addOption({ QStringLiteral("cut"), QStringLiteral("The camera cut to produce, 1 for the first (default)."),
                     QStringLiteral("N") });
  parser.addOption({ QStringLiteral("output"),
                     QStringLiteral("The folder to produce into (default: the AnimationProductionPath setting)."),
                     QStringLiteral("DIR") });
  parser.addPositionalArgument(QStringLiteral("drawing"), QStringLiteral("The drawing to open."));

  QStringList arguments;
  for (int i = 0; i < argc; ++i)
    arguments << QString::fromLocal8Bit(argv[i]);
  parser.parse(arguments);
  kovHostApplication app(argc, argv, parser.value(QStringLiteral("settings")));
  parser.process(app);

  odInitialize();
  int exitCode = 0;
  {
    kovHostClasses classes;
    kovHostServices services;
    kovHostCommands commands;
    const QStringList positional = parser.positionalArguments();
    QStringList lines;
    QString message;
    const bool produce = parser.isSet(QStringLiteral("produce"));
    if (!commandLines(parser, lines, message) || (produce && !productionLines(parser, lines, message))) {
      QTextStream(stderr) << "kovhost: " << message << '\n';
      exitCode = 1;
    } else if (parser.isSet(QStringLiteral("headless")) || produce) {
      exitCode = runHeadless(app, services, lines, positional.value(0));
    } else {
      // The window, with the module's docks in it, is gone when this returns.
      exitCode = runDesktop(app, services, positional.value(0), lines);
    }
    app.unloadAnimationModule();
  }
  odUninitialize();
  return exitCode;
}
