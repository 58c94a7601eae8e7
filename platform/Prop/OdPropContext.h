#ifndef OD_PROP_CONTEXT_H
#define OD_PROP_CONTEXT_H

#include "Rx/OdString.h"

#include <vector>

// Writes the text that describes an object's properties to the property
// palette: one node per line,
//
//   <Prop Name="Duration" Type="double" VisibleName="Duration" Path="General" Value="5" />\r\n
//
// each attribute written as name="value" followed by one blank. Every node has
// Name, Type and VisibleName; a node inside categories has Path, the names of
// its enclosing categories joined by '/'; a property has Value. A property's
// path, as setPropertyValue receives it, is its Path and its Name joined by
// '/' (see joinPath).
//
// Attribute values escape &, <, >, " and control characters as XML character
// references, so that any text stays on one line and parseable. Booleans are
// written true/false, numbers in the shortest form that reads back exactly.
//
// Names are chosen by the code that writes the node and must not contain '/'
// (a visible name may hold anything).
class OdPropContext {
public:
  // Writes a node of Type="category"; the nodes written until the matching
  // endCategory() are inside it.
  OdPropContext& beginCategory(const OdString& name, const OdString& visibleName);
  void endCategory();

  // Property nodes of the palette's kinds. A combo's choices come from
  // OdPropBase::getPropertyPossibleValues; a button has no value.
  OdPropContext& addString(const OdString& name, const OdString& visibleName, const OdString& value);
  OdPropContext& addCombo(const OdString& name, const OdString& visibleName, const OdString& value);
  OdPropContext& addBool(const OdString& name, const OdString& visibleName, bool value);
  OdPropContext& addDouble(const OdString& name, const OdString& visibleName, double value);
  OdPropContext& addButton(const OdString& name, const OdString& visibleName);
  // A node of any type, without a value.
  OdPropContext& addNode(const OdString& name, const OdString& type, const OdString& visibleName);

  // Adds an attribute to the node written last (ReadOnly, Description, Unit...).
  OdPropContext& attribute(const OdString& name, const OdString& value);
  // Text literals come here rather than to the bool overload.
  OdPropContext& attribute(const OdString& name, const OdChar* value) { return attribute(name, OdString(value)); }
  OdPropContext& attribute(const OdString& name, bool value);
  OdPropContext& attribute(const OdString& name, double value);

  // The text written so far, the last node closed.
  OdString text() const;
  // The path of the categories open now, joined by '/'.
  OdString currentPath() const;

  static OdString joinPath(const OdString& path, const OdString& name);
  static OdString formatBool(bool value);
  static OdString formatDouble(double value);

private:
  void closeNode();

  OdString m_text;
  // The last node, still open for attributes.
  OdString m_open;
  std::vector<OdString> m_categories;
};

#endif
