#ifndef KOV_DESKTOP_H
#define KOV_DESKTOP_H

class kovHostApplication;
class kovHostServices;

// Shows the main window and runs the application until it closes; the window
// and everything in it are gone when this returns.
int runDesktop(kovHostApplication& app, kovHostServices& services);

#endif
