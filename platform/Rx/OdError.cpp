#include "Rx/OdError.h"

#include "Rx/OdRxClass.h"

OdError::OdError(OdResult code)
  : m_code(code)
{
}

OdError::OdError(const OdString& message)
  : m_code(eInvalidInput)
  , m_message(message)
{
}

OdError::OdError(OdResult code, const OdString& message)
  : m_code(code)
  , m_message(message)
{
}

OdString OdError::description() const
{
  if (!m_message.isEmpty())
    return m_message;
  return OdString(odResultDescription(m_code));
}

void OdError::prependContext(const OdString& context)
{
  m_message = context + description();
}

namespace {

OdString classMismatchText(const OdRxClass* from, const OdRxClass* to)
{
  OdString text(L"Object of class ");
  text += from ? from->name() : OdString(L"(null)");
  text += L" can't be converted to ";
  text += to ? to->name() : OdString(L"(unregistered class)");
  return text;
}

} // namespace

OdError_NotThatKindOfClass::OdError_NotThatKindOfClass(const OdRxClass* from, const OdRxClass* to)
  : OdError(eNotThatKindOfClass, classMismatchText(from, to))
{
}
