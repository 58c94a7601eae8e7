#ifndef OD_PROP_BASE_H
#define OD_PROP_BASE_H

#include "Db/OdDbObjectId.h"
#include "Prop/OdPropContext.h"
#include "Prop/OdStringArray.h"
#include "Rx/OdResult.h"
#include "Rx/OdRxClass.h"

// Describes the properties of one kind of object to the property palette and
// applies the palette's edits. A provider is created per palette session by
// OdPropServices and told the object it describes with setObjectId.
class OdPropBase : public OdRxObject {
  ODRX_DECLARE_MEMBERS(OdPropBase);

public:
  // What the palette does after a successful setPropertyValue.
  enum Action {
    kNone = 0,     // nothing: the edited value is all that changed
    kRefresh = 1,  // read the values again (getPropertyValues)
    kRecreate = 2  // rebuild the palette: the set of properties changed
  };

  // Writes the definition of the object's properties with their current
  // values. False when the object cannot be described (e.g. it is gone).
  virtual bool getPropertyValues(OdPropContext& ctx) = 0;

  // Applies value, as the palette shows it, to the property at path (see
  // OdPropContext for paths). False, leaving the object as it was, for an
  // unknown path or a value the property does not take; action is set only
  // on success.
  virtual bool setPropertyValue(const OdString& path, const OdString& value, Action& action) = 0;

  // The value of the property at path, as getPropertyValues writes it. False
  // for a path that holds no value; the base class knows none.
  virtual bool getPropertyValue(const OdString& path, OdString& value);

  // The choices of a combo property and, for each, the path of its icon (an
  // empty string for none). False for a path that is not a combo. The base
  // class has no combos.
  virtual bool getPropertyPossibleValues(const OdString& path, OdStringArray& values, OdStringArray& iconPaths);

  void setObjectId(const OdDbObjectId& id) { m_objectId = id; }
  const OdDbObjectId& objectId() const { return m_objectId; }

  // Why the last call that returned false failed, for the palette to tell
  // the user: a code and a sentence. Meaningful only right after a failure.
  OdResult lastError() const { return m_lastError; }
  const OdString& lastErrorMessage() const { return m_lastErrorMessage; }

protected:
  OdPropBase() = default;

  // Keeps why a call fails; returns false for the call to return.
  bool setLastError(OdResult code, const OdString& message);

private:
  OdDbObjectId m_objectId;
  OdResult m_lastError = eOk;
  OdString m_lastErrorMessage;
};

typedef OdSmartPtr<OdPropBase> OdPropBasePtr;

// Creates a property provider; registered with OdPropServices per class.
typedef OdPropBasePtr (*OdPropBaseCreateFn)();

#endif
