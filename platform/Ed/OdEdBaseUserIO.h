#ifndef OD_ED_BASE_USER_IO_H
#define OD_ED_BASE_USER_IO_H

#include "Ed/OdEdUserIO.h"

// User input read as text: implements every get call over one primitive,
// getInput, that shows a prompt and returns what the user typed. Answers are
// read as follows:
//   point    x,y,z or x,y (z = 0); decimal numbers, '.' as the decimal point,
//            optional exponent; not-a-number and infinity are refused
//   number   the same decimal form; an integer for getInt, within its range
//   keyword  see OdEdUserIO
//   text     as typed
// A refused answer prints a message through putString and asks again.
class OdEdBaseUserIO : public OdEdUserIO {
  ODRX_DECLARE_MEMBERS(OdEdBaseUserIO);

public:
  OdGePoint3d getPoint(const OdString& prompt, int options = OdEd::kGptDefault,
                       const OdGePoint3d* pDefault = nullptr, const OdString& keywords = OdString::kEmpty,
                       OdEdPointTracker* pTracker = nullptr) override;
  int getKeyword(const OdString& prompt, const OdString& keywords, int defVal = -1,
                 int options = OdEd::kInpDefault) override;
  OdString getString(const OdString& prompt, int options = OdEd::kInpDefault,
                     const OdString& defVal = OdString::kEmpty,
                     const OdString& keywords = OdString::kEmpty) override;
  double getReal(const OdString& prompt, int options = OdEd::kInpDefault, double defVal = 0.0,
                 const OdString& keywords = OdString::kEmpty) override;
  int getInt(const OdString& prompt, int options = OdEd::kInpDefault, int defVal = 0,
             const OdString& keywords = OdString::kEmpty) override;

  // The parsers behind the get calls: false for text that is not a point,
  // a finite number or an int.
  static bool parsePoint(const OdString& text, OdGePoint3d& point);
  static bool parseReal(const OdString& text, double& value);
  static bool parseInt(const OdString& text, int& value);

protected:
  // Shows prompt and returns the answer as typed, empty for Enter. Raises
  // OdEdCancel when the user cancels or there is no more input.
  virtual OdString getInput(const OdString& prompt) = 0;
};

typedef OdSmartPtr<OdEdBaseUserIO> OdEdBaseUserIOPtr;

#endif
