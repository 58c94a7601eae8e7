#ifndef IKOV_CONSOLE_H
#define IKOV_CONSOLE_H

#include "Rx/OdRxObject.h"

#include <QString>

// The host's command line output ("kov.IConsole").
class IkovConsole : public OdRxObject {
public:
  static const OdChar* serviceId() { return L"kov.IConsole"; }

  virtual void putString(const QString& text) = 0;
  // The progress of a long command (a production) on one line that each
  // call replaces; an empty text ends that line.
  virtual void putProgress(const QString& text) = 0;
};

#endif
