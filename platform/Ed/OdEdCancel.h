#ifndef OD_ED_CANCEL_H
#define OD_ED_CANCEL_H

#include "Rx/OdError.h"

// Raised by user input when the user cancels (or a script runs out of input).
// It travels up through the command, which cleans up and lets it pass.
class OdEdCancel : public OdError {
public:
  OdEdCancel() : OdError(eUserBreak, OdString(L"*Cancel*")) {}
};

#endif
