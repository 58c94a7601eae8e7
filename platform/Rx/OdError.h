#ifndef OD_ERROR_H
#define OD_ERROR_H

#include "Rx/OdResult.h"
#include "Rx/OdString.h"

class OdRxClass;

// The exception the platform raises: a result code and a message a user can
// read. Thrown by value, caught by const reference.
class OdError {
public:
  explicit OdError(OdResult code);
  explicit OdError(const OdString& message);
  OdError(OdResult code, const OdString& message);
  virtual ~OdError() = default;

  OdResult code() const { return m_code; }
  OdString description() const;

  // Puts what was being done in front of the message. Handlers that add
  // context change the caught object and rethrow it (`throw;`), so that the
  // error keeps its class for the handlers further out.
  void prependContext(const OdString& context);

private:
  OdResult m_code;
  OdString m_message;
};

// Raised when an object is taken as a class it is not derived from.
class OdError_NotThatKindOfClass : public OdError {
public:
  OdError_NotThatKindOfClass(const OdRxClass* from, const OdRxClass* to);
};

class OdError_InvalidIndex : public OdError {
public:
  OdError_InvalidIndex() : OdError(eInvalidIndex) {}
};

#endif
