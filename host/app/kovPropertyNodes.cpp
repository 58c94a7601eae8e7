#include "host/app/kovPropertyNodes.h"

#include "host/app/kovHostLog.h"

#include "Db/OdDbEntity.h"
#include "Prop/OdPropServices.h"

#include <QCoreApplication>
#include <QRegularExpression>

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

QString tr(const char* text)
{
  return QCoreApplication::translate("kovPropertiesDock", text);
}

QString formatPoint(const OdGePoint3d& p)
{
  return QStringLiteral("%1, %2, %3").arg(p.x, 0, 'g', 6).arg(p.y, 0, 'g', 6).arg(p.z, 0, 'g', 6);
}

kovPropertyNode node(kovPropertyNode::Kind kind, const QString& parentPath, const QString& name,
                     const QString& visibleName, const QString& value = QString())
{
  kovPropertyNode row;
  row.kind = kind;
  row.parentPath = parentPath;
  row.name = name;
  row.path = parentPath.isEmpty() ? name : parentPath + QLatin1Char('/') + name;
  row.visibleName = visibleName;
  row.value = value;
  return row;
}

void addBasicRows(const OdDbObject& object, QList<kovPropertyNode>& rows)
{
  const QString general = QStringLiteral("General");
  rows << node(kovPropertyNode::Category, QString(), general, tr("General"));
  rows << node(kovPropertyNode::Text, general, QStringLiteral("Class"), tr("Class"),
               odToQString(object.isA()->name()));
  rows << node(kovPropertyNode::Text, general, QStringLiteral("Handle"), tr("Handle"),
               odToQString(object.objectId().getHandle().ascii()));
  const OdDbEntityPtr entity = OdDbEntity::cast(&object);
  OdGeExtents3d extents;
  if (!entity.isNull() && entity->getGeomExtents(extents) == eOk) {
    rows << node(kovPropertyNode::Text, general, QStringLiteral("ExtentsMin"), tr("Extents min"),
                 formatPoint(extents.minPoint()));
    rows << node(kovPropertyNode::Text, general, QStringLiteral("ExtentsMax"), tr("Extents max"),
                 formatPoint(extents.maxPoint()));
  }
}

kovPropertyNode::Kind kindOf(const QString& type)
{
  static const QMap<QString, kovPropertyNode::Kind> kinds {
    { QStringLiteral("category"), kovPropertyNode::Category }, { QStringLiteral("string"), kovPropertyNode::String },
    { QStringLiteral("combo"), kovPropertyNode::Combo },       { QStringLiteral("bool"), kovPropertyNode::Bool },
    { QStringLiteral("double"), kovPropertyNode::Double },     { QStringLiteral("button"), kovPropertyNode::Button },
  };
  // A kind the dock does not edit is shown as text.
  return kinds.value(type, kovPropertyNode::Text);
}

void addProviderRows(OdPropBase& provider, QList<kovPropertyNode>& rows)
{
  OdPropContext context;
  if (!provider.getPropertyValues(context)) {
    qCWarning(lcHostDesktop).noquote() << "the property provider could not describe the object:"
                                       << odToQString(provider.lastErrorMessage());
    return;
  }
  for (const QString& line : odToQString(context.text()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const QMap<QString, QString> attributes = kovPropertyNodes::parsePropLine(line);
    if (attributes.isEmpty())
      continue;
    const QString name = attributes.value(QStringLiteral("Name"));
    kovPropertyNode row = node(kindOf(attributes.value(QStringLiteral("Type"))), attributes.value(QStringLiteral("Path")),
                               name, attributes.value(QStringLiteral("VisibleName"), name),
                               attributes.value(QStringLiteral("Value")));
    if (row.kind == kovPropertyNode::Combo) {
      OdStringArray labels;
      OdStringArray icons;
      if (provider.getPropertyPossibleValues(odFromQString(row.path), labels, icons)) {
        for (const OdString& label : labels)
          row.choices << odToQString(label);
      } else {
        row.choices = attributes.value(QStringLiteral("Items")).split(QLatin1Char(';'), Qt::SkipEmptyParts);
      }
    }
    rows << row;
  }
}

} // namespace

bool kovPropertyNode::operator==(const kovPropertyNode& other) const
{
  return kind == other.kind && path == other.path && parentPath == other.parentPath && name == other.name
         && visibleName == other.visibleName && value == other.value && choices == other.choices;
}

QList<kovPropertyNode> kovPropertyNodes::describe(const OdDbObjectId& id, OdPropBasePtr& provider)
{
  QList<kovPropertyNode> rows;
  provider = nullptr;
  {
    const OdDbObjectPtr object = id.isValid() ? id.openObject(OdDb::kForRead) : OdDbObjectPtr();
    if (object.isNull())
      return rows;
    addBasicRows(*object, rows);
    provider = odpropServices()->createPropForObject(object.get());
  }
  if (provider.isNull())
    return rows;
  provider->setObjectId(id);
  addProviderRows(*provider, rows);
  return rows;
}

QMap<QString, QString> kovPropertyNodes::parsePropLine(const QString& line)
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
