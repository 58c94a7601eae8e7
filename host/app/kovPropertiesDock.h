#ifndef KOV_PROPERTIES_DOCK_H
#define KOV_PROPERTIES_DOCK_H

#include "Db/OdDbObjectId.h"

#include <QDockWidget>
#include <QMap>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

// The "Properties" dock: what the host knows of the shown object (class,
// handle, extents) and, when a property provider is registered for its
// class, the properties the provider describes, by category.
class kovPropertiesDock : public QDockWidget {
  Q_OBJECT
public:
  explicit kovPropertiesDock(QWidget* parent = nullptr);

  QTreeWidget* tree() const { return m_tree; }
  // The value shown in the row with that name, for checks; empty when none.
  QString value(const QString& name) const;

  // One attribute set of a provider's line <Prop Name="..." ... />; empty
  // for a line that is not a node.
  static QMap<QString, QString> parsePropLine(const QString& line);

public slots:
  // Shows the object; a null or erased id empties the dock.
  void showObject(const OdDbObjectId& id);

private:
  void addRow(QTreeWidgetItem* parent, const QString& name, const QString& value);
  void addProviderRows(const OdDbObjectId& id);

  QTreeWidget* m_tree;
};

#endif
