#include "host/app/kovPropertiesDock.h"

#include "host/app/kovHostLog.h"

#include "Db/OdDbEntity.h"
#include "Prop/OdPropServices.h"

#include <QHeaderView>
#include <QRegularExpression>
#include <QTreeWidget>

namespace {

// The provider writes XML character references for &, <, >, " and controls.
QString unescape(const QString& text)
{
  static const QRegularExpression reference(QStringLiteral("&(#x[0-9A-Fa-f]+|#[0-9]+|amp|lt|gt|quot|apos);"));
  QString result;
  int last = 0;
  for (auto it = reference.globalMatch(text); it.hasNext();) {
    const QRegularExpressionMatch match = it.next();
    result += text.midRef(last, match.capturedStart() - last);
    const QString name = match.captured(1);
    if (name == QLatin1String("amp"))
      result += QLatin1Char('&');
    else if (name == QLatin1String("lt"))
      result += QLatin1Char('<');
    else if (name == QLatin1String("gt"))
      result += QLatin1Char('>');
    else if (name == QLatin1String("quot"))
      result += QLatin1Char('"');
    else if (name == QLatin1String("apos"))
      result += QLatin1Char('\'');
    else {
      bool ok = false;
      const uint code = name.startsWith(QLatin1String("#x")) ? name.mid(2).toUInt(&ok, 16) : name.mid(1).toUInt(&ok);
      if (ok)
        result += QString::fromUcs4(&code, 1);
    }
    last = match.capturedEnd();
  }
  return result + text.mid(last);
}

QString formatPoint(const OdGePoint3d& p)
{
  return QStringLiteral("%1, %2, %3").arg(p.x, 0, 'g', 6).arg(p.y, 0, 'g', 6).arg(p.z, 0, 'g', 6);
}

} // namespace

kovPropertiesDock::kovPropertiesDock(QWidget* parent)
  : QDockWidget(tr("Properties"), parent)
  , m_tree(new QTreeWidget(this))
{
  setObjectName(QStringLiteral("Properties"));
  m_tree->setObjectName(QStringLiteral("PropertiesTree"));
  m_tree->setColumnCount(2);
  m_tree->setHeaderLabels({ tr("Name"), tr("Value") });
  m_tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  m_tree->setRootIsDecorated(true);
  setWidget(m_tree);
}

QMap<QString, QString> kovPropertiesDock::parsePropLine(const QString& line)
{
  static const QRegularExpression node(QStringLiteral("^\\s*<Prop\\s(.*)/>\\s*$"));
  static const QRegularExpression attribute(QStringLiteral("([A-Za-z_][A-Za-z0-9_]*)=\"([^\"]*)\""));
  QMap<QString, QString> attributes;
  const QRegularExpressionMatch match = node.match(line);
  if (!match.hasMatch())
    return attributes;
  for (auto it = attribute.globalMatch(match.captured(1)); it.hasNext();) {
    const QRegularExpressionMatch a = it.next();
    attributes.insert(a.captured(1), unescape(a.captured(2)));
  }
  return attributes;
}

QString kovPropertiesDock::value(const QString& name) const
{
  const QList<QTreeWidgetItem*> found = m_tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive, 0);
  return found.isEmpty() ? QString() : found.first()->text(1);
}

void kovPropertiesDock::addRow(QTreeWidgetItem* parent, const QString& name, const QString& value)
{
  auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
  item->setText(0, name);
  item->setText(1, value);
  item->setToolTip(1, value);
}

void kovPropertiesDock::showObject(const OdDbObjectId& id)
{
  m_tree->clear();
  OdDbObjectPtr object = id.isValid() ? id.openObject(OdDb::kForRead) : OdDbObjectPtr();
  if (object.isNull())
    return;
  auto* general = new QTreeWidgetItem(m_tree, { tr("General") });
  addRow(general, tr("Class"), odToQString(object->isA()->name()));
  addRow(general, tr("Handle"), odToQString(id.getHandle().ascii()));
  OdDbEntityPtr entity = OdDbEntity::cast(object.get());
  OdGeExtents3d extents;
  if (!entity.isNull() && entity->getGeomExtents(extents) == eOk) {
    addRow(general, tr("Extents min"), formatPoint(extents.minPoint()));
    addRow(general, tr("Extents max"), formatPoint(extents.maxPoint()));
  }
  object = nullptr;
  addProviderRows(id);
  m_tree->expandAll();
}

void kovPropertiesDock::addProviderRows(const OdDbObjectId& id)
{
  OdPropBasePtr provider;
  {
    OdDbObjectPtr object = id.openObject(OdDb::kForRead);
    provider = odpropServices()->createPropForObject(object.get());
  }
  if (provider.isNull())
    return;
  provider->setObjectId(id);
  OdPropContext context;
  if (!provider->getPropertyValues(context)) {
    qCWarning(lcHostDesktop) << "the property provider could not describe" << odToQString(id.getHandle().ascii());
    return;
  }
  // Categories by their full path, so that nodes find their parents.
  QMap<QString, QTreeWidgetItem*> categories;
  for (const QString& line : odToQString(context.text()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const QMap<QString, QString> node = parsePropLine(line);
    if (node.isEmpty())
      continue;
    const QString path = node.value(QStringLiteral("Path"));
    QTreeWidgetItem* parent = categories.value(path);
    const QString shown = node.value(QStringLiteral("VisibleName"), node.value(QStringLiteral("Name")));
    if (node.value(QStringLiteral("Type")) == QLatin1String("category")) {
      auto* category = parent ? new QTreeWidgetItem(parent, { shown }) : new QTreeWidgetItem(m_tree, { shown });
      const QString name = node.value(QStringLiteral("Name"));
      categories.insert(path.isEmpty() ? name : path + QLatin1Char('/') + name, category);
      continue;
    }
    addRow(parent, shown, node.value(QStringLiteral("Value")));
  }
}
