#ifndef KOV_RENDER_DISPLAY_H
#define KOV_RENDER_DISPLAY_H

#include <QString>

// The X display the render engine draws through. The engine needs one even
// offscreen; without DISPLAY the host starts a private virtual X server
// (Xvfb) for itself, which stops with the host.
class kovRenderDisplay {
public:
  // The display name to use; empty, with the reason and what to do in
  // message, when there is none and none can be started.
  static QString ensure(QString& message);
};

#endif
