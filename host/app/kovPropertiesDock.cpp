#include "host/app/kovPropertiesDock.h"

#include "host/app/kovHostApplication.h"
#include "host/app/kovHostLog.h"
#include "host/app/kovPropertyEditors.h"

#include "Db/OdDbBlockTableRecord.h"
#include "Db/OdDbDatabase.h"
#include "Db/OdDbObjectIterator.h"

#include <QHeaderView>
#include <QInputDialog>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>

namespace {

const int kValueRole = Qt::UserRole;
const QLatin1String kSelectEntity("SelectEntity");

} // namespace

kovPropertiesDock::kovPropertiesDock(QWidget* parent)
  : QDockWidget(tr("Properties"), parent)
  , m_tree(new QTreeWidget(this))
{
  setObjectName(QStringLiteral("Properties"));
  m_tree->setObjectName(QStringLiteral("PropertiesTree"));
  m_tree->setColumnCount(2);
  m_tree->setHeaderLabels({ tr("Name"), tr("Value") });
  m_tree->header()->setSectionResizeMode(0, QHeaderView::Interactive);
  m_tree->setRootIsDecorated(true);
  m_tree->setSelectionMode(QAbstractItemView::NoSelection);
  setWidget(m_tree);
}

QString kovPropertiesDock::value(const QString& name) const
{
  const QList<QTreeWidgetItem*> found = m_tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive, 0);
  return found.isEmpty() ? QString() : found.first()->data(1, kValueRole).toString();
}

QWidget* kovPropertiesDock::editorAt(const QString& path) const
{
  QTreeWidgetItem* item = m_items.value(path);
  if (!item)
    return nullptr;
  QWidget* editor = m_tree->itemWidget(item, 1);
  return editor ? editor : m_tree->itemWidget(item, 0);
}

void kovPropertiesDock::showObject(const OdDbObjectId& id)
{
  if (id == m_shown && !id.isNull()) {
    scheduleRefresh();
    return;
  }
  m_shown = id;
  m_folded.clear();
  m_items.clear();
  m_nodes = kovPropertyNodes::describe(m_shown, m_provider);
  m_refreshPending = false;
  rebuild();
  m_tree->verticalScrollBar()->setValue(0);
}

void kovPropertiesDock::scheduleRefresh()
{
  if (m_refreshPending)
    return;
  m_refreshPending = true;
  QTimer::singleShot(0, this, [this] {
    if (m_refreshPending)
      refresh();
  });
}

void kovPropertiesDock::refresh()
{
  m_refreshPending = false;
  const QList<kovPropertyNode> nodes = kovPropertyNodes::describe(m_shown, m_provider);
  if (nodes == m_nodes)
    return;
  m_nodes = nodes;
  rebuild();
}

void kovPropertiesDock::rebuild()
{
  m_rebuilding = true;
  for (auto it = m_items.cbegin(); it != m_items.cend(); ++it) {
    if (it.value()->childCount() > 0 && !it.value()->isExpanded())
      m_folded.insert(it.key());
    else
      m_folded.remove(it.key());
  }
  const int scroll = m_tree->verticalScrollBar()->value();
  m_tree->clear();
  m_items.clear();
  for (const kovPropertyNode& node : m_nodes)
    addRow(node);
  for (auto it = m_items.cbegin(); it != m_items.cend(); ++it)
    it.value()->setExpanded(!m_folded.contains(it.key()));
  // The names of the rows now shown, leaving the values half of a narrow
  // dock at least; the user may widen either.
  m_tree->resizeColumnToContents(0);
  if (m_tree->isVisible())
    m_tree->setColumnWidth(0, std::min(m_tree->columnWidth(0), m_tree->viewport()->width() / 2));
  // The scroll range follows the new rows only once they are laid out.
  m_tree->doItemsLayout();
  m_tree->verticalScrollBar()->setValue(scroll);
  m_rebuilding = false;
}

void kovPropertiesDock::addRow(const kovPropertyNode& node)
{
  QTreeWidgetItem* parent = m_items.value(node.parentPath);
  auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
  m_items.insert(node.path, item);
  item->setText(0, node.visibleName);
  if (node.kind == kovPropertyNode::Category) {
    item->setFirstColumnSpanned(true);
    QFont bold = item->font(0);
    bold.setBold(true);
    item->setFont(0, bold);
    return;
  }
  item->setData(1, kValueRole, node.value);
  item->setToolTip(1, node.value);
  QWidget* editor = kovPropertyEditors::create(
      node, [this, node](const QString& value) { return submit(node, value); }, m_tree);
  if (!editor) {
    item->setText(1, node.value);
    return;
  }
  // A button is a row of its own, as wide as the dock.
  const int column = node.kind == kovPropertyNode::Button ? 0 : 1;
  if (column == 0) {
    item->setText(0, QString());
    item->setFirstColumnSpanned(true);
  }
  m_tree->setItemWidget(item, column, editor);
  item->setSizeHint(column, editor->sizeHint());
}

bool kovPropertiesDock::submit(const kovPropertyNode& node, const QString& value)
{
  if (m_rebuilding || m_provider.isNull())
    return true;
  QString given = value;
  if (node.kind == kovPropertyNode::Button && node.name == kSelectEntity) {
    given = pickEntity();
    if (given.isEmpty())
      return true;
  }
  if (OdDbDatabase* db = m_shown.database())
    db->startUndoRecord();
  OdPropBase::Action action = OdPropBase::kNone;
  if (!m_provider->setPropertyValue(odFromQString(node.path), odFromQString(given), action)) {
    const QString reason = odToQString(m_provider->lastErrorMessage());
    qCWarning(lcHostDesktop).noquote() << "property" << node.path << "refused" << given << ":" << reason;
    // After the editor has shown its old value again.
    QTimer::singleShot(0, this, [this, reason] { QMessageBox::warning(this, tr("Invalid Property Value"), reason); });
    return false;
  }
  // The editor and the viewport follow the drawing.
  if (kovHostApplication* app = kovHostApplication::instance())
    app->raiseRefreshEvent(QStringLiteral("<event-refresh:database_changed>"));
  // The editor shows what was typed, which the rows no longer tell: the next
  // reading rebuilds them, even when the value goes back (undo).
  m_nodes.clear();
  scheduleRefresh();
  return true;
}

QString kovPropertiesDock::pickEntity()
{
  OdDbDatabase* db = m_shown.database();
  if (!db)
    return QString();
  QStringList entities;
  {
    const OdDbBlockTableRecordPtr space = OdDbBlockTableRecord::cast(db->getModelSpaceId().openObject().get());
    for (OdDbObjectIteratorPtr it = space.isNull() ? OdDbObjectIteratorPtr() : space->newIterator();
         !it.isNull() && !it->done(); it->step()) {
      if (it->objectId() != m_shown)
        entities << odToQString(it->objectId().getHandle().ascii()) + QLatin1String("  ")
                        + odToQString(it->objectId().objectClass()->name());
    }
  }
  bool ok = false;
  const QString chosen =
      QInputDialog::getItem(this, tr("Select Entity"), tr("The entity to turn toward:"), entities, 0, false, &ok);
  return ok ? chosen.section(QLatin1Char(' '), 0, 0) : QString();
}
