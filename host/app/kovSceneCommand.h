#ifndef KOV_SCENE_COMMAND_H
#define KOV_SCENE_COMMAND_H

#include "Ed/OdEdCommand.h"

// The commands that sketch a scene with polygon meshes (group "kovHost"):
// box, sphere, cylinder and plane, each asked for its place, its size and a
// colour ("ByLayer", an index 1 to 255, or r,g,b).
class kovSceneCommand : public OdEdCommand {
public:
  explicit kovSceneCommand(const OdChar* name) : m_name(name) {}
  const OdString groupName() const override { return OdString(L"kovHost"); }
  const OdString globalName() const override { return m_name; }
  void execute(OdEdCommandContext* pCmdCtx) override;

private:
  OdString m_name;
};

#endif
