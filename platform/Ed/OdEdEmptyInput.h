#ifndef OD_ED_EMPTY_INPUT_H
#define OD_ED_EMPTY_INPUT_H

#include "Ed/OdEdCancel.h"

// Raised by user input when the user pressed Enter on an empty prompt and the
// call has no default to give. A command that loops on a prompt usually takes
// it as "done"; one that does not catch it is cancelled.
class OdEdEmptyInput : public OdEdCancel {
};

#endif
