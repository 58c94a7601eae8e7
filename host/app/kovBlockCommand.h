#ifndef KOV_BLOCK_COMMAND_H
#define KOV_BLOCK_COMMAND_H

#include "Ed/OdEdCommand.h"

// Blocks by hand (group "kovHost"): "block" moves chosen entities into a new
// block definition and puts a reference to it where they were; "insert"
// places a reference to a block by name, scaled and turned about z.
class kovBlockCommand : public OdEdCommand {
public:
  explicit kovBlockCommand(const OdChar* name) : m_name(name) {}
  const OdString groupName() const override { return OdString(L"kovHost"); }
  const OdString globalName() const override { return m_name; }
  void execute(OdEdCommandContext* pCmdCtx) override;

private:
  OdString m_name;
};

#endif
