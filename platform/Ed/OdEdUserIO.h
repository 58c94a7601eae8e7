#ifndef OD_ED_USER_IO_H
#define OD_ED_USER_IO_H

#include "Ed/OdEd.h"
#include "Ge/OdGePoint3d.h"
#include "Rx/OdRxClass.h"

class OdEdPointTracker;

// What a command asks the user, and how it tells the user things.
//
// Every get call shows its prompt and waits for an answer. The user may type
// one of the prompt's keywords (a blank-separated list such as
// "Finish Undo Close", matched ignoring case, in full or by an unambiguous
// start): getKeyword returns its index, the other calls raise OdEdKeyword.
// Cancelling raises OdEdCancel. An empty answer (Enter) gives the default
// value: for getPoint the point pDefault points to, for getKeyword defVal when
// it is a keyword index, for the others defVal unless the options include
// OdEd::kInpThrowEmpty. Without a default, Enter raises OdEdEmptyInput.
// Invalid answers are refused with a message and asked again.
class OdEdUserIO : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdEdUserIO);

public:
  // options: OdEd::GetPointOptions. The tracker, when given, is told the
  // point before it is returned.
  virtual OdGePoint3d getPoint(const OdString& prompt, int options = OdEd::kGptDefault,
                               const OdGePoint3d* pDefault = nullptr, const OdString& keywords = OdString::kEmpty,
                               OdEdPointTracker* pTracker = nullptr) = 0;
  // The index of the keyword chosen.
  virtual int getKeyword(const OdString& prompt, const OdString& keywords, int defVal = -1,
                         int options = OdEd::kInpDefault) = 0;
  virtual OdString getString(const OdString& prompt, int options = OdEd::kInpDefault,
                             const OdString& defVal = OdString::kEmpty,
                             const OdString& keywords = OdString::kEmpty) = 0;
  virtual double getReal(const OdString& prompt, int options = OdEd::kInpDefault, double defVal = 0.0,
                         const OdString& keywords = OdString::kEmpty) = 0;
  virtual int getInt(const OdString& prompt, int options = OdEd::kInpDefault, int defVal = 0,
                     const OdString& keywords = OdString::kEmpty) = 0;
  // Shows a message to the user.
  virtual void putString(const OdString& string) = 0;
};

typedef OdSmartPtr<OdEdUserIO> OdEdUserIOPtr;

#endif
