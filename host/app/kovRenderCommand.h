#ifndef KOV_RENDER_COMMAND_H
#define KOV_RENDER_COMMAND_H

#include "host/app/kovHostNamedCommand.h"

// The commands that frame and render the active view (group "kovHost"):
//   render FILE [WIDTH HEIGHT] [SAMPLES]  writes the view as PNG or JPG (by the
//                                         file's extension); SAMPLES is asked
//                                         only of the path tracer
//   view EYE TARGET [FOV]                 sets the active view's camera
//   visualstyle STYLE                     Wireframe, Shaded, Edges or Rendered
//   sun AZIMUTH ELEVATION [SKY]           lights the scene by a sun (degrees
//                                         clockwise from north, +Y) and a sky
//   namedview Save|Restore NAME           keeps the active view in the
//                                         drawing's view table, or shows it
// Trailing optional values may be left off the end of a script line.
class kovRenderCommand : public kovHostNamedCommand {
public:
  using kovHostNamedCommand::kovHostNamedCommand;
  void execute(OdEdCommandContext* pCmdCtx) override;
};

#endif
