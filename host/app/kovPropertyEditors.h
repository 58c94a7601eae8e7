#ifndef KOV_PROPERTY_EDITORS_H
#define KOV_PROPERTY_EDITORS_H

#include "host/app/kovPropertyNodes.h"

#include <functional>

class QWidget;

// The widget that shows and edits one property of the Properties dock, by
// its kind: a line for a string or a number (taken when the line is left or
// Enter is pressed), a combo box, a check box, a push button. A widget hands
// a changed value to submit and, when submit refuses it, shows the value it
// had again. Each widget is named after the property's path.
class kovPropertyEditors {
public:
  // False when the value was refused. A button submits an empty value.
  using Submit = std::function<bool(const QString& value)>;

  // Null for a row that is not edited (a category, a text).
  static QWidget* create(const kovPropertyNode& node, const Submit& submit, QWidget* parent);
};

#endif
