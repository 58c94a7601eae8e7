#ifndef KOV_SELECTION_H
#define KOV_SELECTION_H

#include "Db/OdDbObjectId.h"

#include <QObject>

// The objects the user selected in the viewport. The viewport highlights
// them, the properties dock shows the first, commands that select take them.
class kovSelection : public QObject {
  Q_OBJECT
public:
  using QObject::QObject;

  const OdDbObjectIdArray& ids() const { return m_ids; }
  bool contains(const OdDbObjectId& id) const { return m_ids.contains(id); }
  // The selection becomes id alone (nothing for a null id).
  void select(const OdDbObjectId& id);
  void clear();
  // Drops the objects that were erased or belong to another drawing.
  void validate(const OdDbDatabase* database);

signals:
  void changed();

private:
  OdDbObjectIdArray m_ids;
};

#endif
