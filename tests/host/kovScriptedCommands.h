#ifndef KOV_SCRIPTED_COMMANDS_H
#define KOV_SCRIPTED_COMMANDS_H

// Host command lines run as a script would run them, on a fresh drawing, with
// what they print kept in a transcript.
#include "kovHostTestEnvironment.h"

#include "host/app/kovCommandRunner.h"
#include "host/app/kovInteractiveUserIO.h"

namespace kovHostTest {

class ScriptedCommands {
public:
  // Opens a new drawing and forgets the transcript.
  void restart()
  {
    app().setDatabase(OdDbDatabase::createObject(), QString());
    transcript.clear();
    kovInteractiveUserIO::FrontEnd frontEnd;
    frontEnd.output = [this](const QString& line) { transcript += line + QLatin1Char('\n'); };
    frontEnd.prompt = [](const QString&) {};
    frontEnd.selection = [] { return OdDbObjectIdArray(); };
    runner = std::make_unique<kovCommandRunner>(app(), kovInteractiveUserIO::createObject(frontEnd, nullptr));
  }

  bool run(const QString& line) { return runner->run(line); }

  QString transcript;
  std::unique_ptr<kovCommandRunner> runner;
};

} // namespace kovHostTest

#endif
