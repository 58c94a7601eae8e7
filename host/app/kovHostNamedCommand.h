#ifndef KOV_HOST_NAMED_COMMAND_H
#define KOV_HOST_NAMED_COMMAND_H

#include "Ed/OdEdCommand.h"

class OdDbDatabase;

// A command of the host's group "kovHost", known by the name it is made with;
// one class serves the commands that share their prompts.
class kovHostNamedCommand : public OdEdCommand {
public:
  explicit kovHostNamedCommand(const OdChar* name) : m_name(name) {}
  const OdString groupName() const override { return OdString(L"kovHost"); }
  const OdString globalName() const override { return m_name; }

protected:
  // The drawing open in the host; raises eNoDatabase ("No drawing is open")
  // when there is none.
  static OdDbDatabase* openDrawing();

  OdString m_name;
};

#endif
