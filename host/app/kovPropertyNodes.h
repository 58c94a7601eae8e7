#ifndef KOV_PROPERTY_NODES_H
#define KOV_PROPERTY_NODES_H

#include "Db/OdDbObjectId.h"
#include "Prop/OdPropBase.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

// One row of the Properties dock: a category or a property, of the host's
// own rows or of the object's property provider.
struct kovPropertyNode {
  // Text is a value the dock only shows; the others are the provider's kinds.
  enum Kind { Category, Text, String, Combo, Bool, Double, Button };

  Kind kind = Text;
  // The provider's path of the property (its categories' names and its own,
  // joined by '/'), unique in the dock.
  QString path;
  // The path of the category that holds the row; empty at the top.
  QString parentPath;
  // The provider's name of the property, the last part of its path.
  QString name;
  QString visibleName;
  QString value;
  // What a combo offers.
  QStringList choices;

  bool operator==(const kovPropertyNode& other) const;
  bool operator!=(const kovPropertyNode& other) const { return !(*this == other); }
};

// What the Properties dock shows of an object: the category "General" with
// the object's class, handle and extents, then the categories and properties
// that a provider registered for the object's class describes.
class kovPropertyNodes {
public:
  // The rows of the object; provider becomes the object's provider, null
  // when its class has none or the object is gone.
  static QList<kovPropertyNode> describe(const OdDbObjectId& id, OdPropBasePtr& provider);
  // The attributes of one line of a provider's definition,
  // <Prop Name="..." ... />; empty for a line that is not a node.
  static QMap<QString, QString> parsePropLine(const QString& line);
};

#endif
