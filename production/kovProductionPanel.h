#ifndef KOV_PRODUCTION_PANEL_H
#define KOV_PRODUCTION_PANEL_H

class kovAnimationEditorWidget;

// Puts production into the editor's production panel: the camera-cut table's
// model and delegate, following the animation the editor shows, the
// confirmation that "Execute Camera Cuts Production" asks for, and the runs
// it starts. The editor cannot do it itself: production is built on it.
class kovProductionPanel {
public:
  static void install(kovAnimationEditorWidget* editor);
  // Shows the confirmation for the cut at row (none when the row has no
  // cut); on "Produce" the recording range it shows becomes the cut's.
  static bool confirm(kovAnimationEditorWidget* editor, int row);
};

#endif
