#ifndef KOV_MAIN_WINDOW_H
#define KOV_MAIN_WINDOW_H

#include <QMainWindow>

class kovHostApplication;
class kovHostServices;

// The host's main window.
class kovMainWindow : public QMainWindow {
  Q_OBJECT
public:
  kovMainWindow(kovHostApplication& app, kovHostServices& services, QWidget* parent = nullptr);

private:
  kovHostApplication& m_app;
  kovHostServices& m_services;
};

#endif
