#ifndef KOV_PROPERTIES_DOCK_H
#define KOV_PROPERTIES_DOCK_H

#include "host/app/kovPropertyNodes.h"

#include "Db/OdDbObjectId.h"
#include "Prop/OdPropBase.h"

#include <QDockWidget>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

// The "Properties" dock: what the host knows of the shown object (class,
// handle, extents) and, when a property provider is registered for its
// class, the provider's properties by category, each with its editor.
//
// An edit goes to the provider as one undo step of the drawing; a refused
// one shows the provider's reason in a warning box and the old value again.
// After an edit, and whenever the shown object is shown again (it changed),
// the dock reads the object once the current event is done and rebuilds its
// rows only when they would show something else, keeping the categories the
// user folded and the scroll position.
class kovPropertiesDock : public QDockWidget {
  Q_OBJECT
public:
  explicit kovPropertiesDock(QWidget* parent = nullptr);

  QTreeWidget* tree() const { return m_tree; }
  // The value shown in the row with that name, for checks; empty when none.
  QString value(const QString& name) const;
  // The editor of the provider's property at path ("Element1/Row1/ValueX");
  // null when none is shown.
  QWidget* editorAt(const QString& path) const;

public slots:
  // Shows the object; a null or erased id empties the dock. The object
  // shown already is read again once the current event is done.
  void showObject(const OdDbObjectId& id);

private:
  void scheduleRefresh();
  void refresh();
  void rebuild();
  void addRow(const kovPropertyNode& node);
  bool submit(const kovPropertyNode& node, const QString& value);
  // The handle of an entity of the drawing the user picks; empty when cancelled.
  QString pickEntity();

  QTreeWidget* m_tree;
  OdDbObjectId m_shown;
  OdPropBasePtr m_provider;
  QList<kovPropertyNode> m_nodes;
  QMap<QString, QTreeWidgetItem*> m_items;
  QSet<QString> m_folded;
  bool m_refreshPending = false;
  // Editors that finish while their rows go away submit nothing.
  bool m_rebuilding = false;
};

#endif
