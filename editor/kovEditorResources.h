#ifndef KOV_EDITOR_RESOURCES_H
#define KOV_EDITOR_RESOURCES_H

// Registers the editor's icons (":/animation/icons/...") with the resource
// system. The editor is a static library, whose resources a program only gets
// when something asks for them; every class that loads an icon calls this
// before it does. Calling it again does nothing.
void kovInitEditorResources();

#endif
