#ifndef KOV_HOST_SELECTION_SET_H
#define KOV_HOST_SELECTION_SET_H

#include "host/api/IkovSelectionSet.h"

#include <QPointer>

class kovSelection;

// The desktop's picked objects for the module; nothing is selected in a
// headless host, which never gives it a selection.
class kovHostSelectionSet : public IkovSelectionSet {
public:
  void setSelection(kovSelection* selection);
  OdDbObjectIdArray selectedIds(OdDbDatabase* db) const override;

private:
  QPointer<kovSelection> m_selection;
};

#endif
