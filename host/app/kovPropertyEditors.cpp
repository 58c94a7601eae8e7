#include "host/app/kovPropertyEditors.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

const QLatin1String kTrue("true");
const QLatin1String kFalse("false");

QWidget* lineEditor(const kovPropertyNode& node, const kovPropertyEditors::Submit& submit, QWidget* parent)
{
  auto* line = new QLineEdit(node.value, parent);
  // The start of a long text, as in a line not yet edited.
  line->setCursorPosition(0);
  if (node.kind == kovPropertyNode::Double)
    line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // Leaving the line after Enter finishes it a second time: only a text
  // that differs from the shown value goes to the provider.
  QObject::connect(line, &QLineEdit::editingFinished, line, [line, submit, value = node.value] {
    if (line->text() != value && !submit(line->text()))
      line->setText(value);
  });
  return line;
}

QWidget* comboEditor(const kovPropertyNode& node, const kovPropertyEditors::Submit& submit, QWidget* parent)
{
  auto* combo = new QComboBox(parent);
  combo->addItems(node.choices);
  // A value outside the choices is still what the object has.
  if (!node.choices.contains(node.value))
    combo->insertItem(0, node.value);
  combo->setCurrentText(node.value);
  QObject::connect(combo, QOverload<int>::of(&QComboBox::activated), combo,
                   [combo, submit, value = node.value](int index) {
                     const QString chosen = combo->itemText(index);
                     if (chosen != value && !submit(chosen))
                       combo->setCurrentText(value);
                   });
  return combo;
}

QWidget* boolEditor(const kovPropertyNode& node, const kovPropertyEditors::Submit& submit, QWidget* parent)
{
  auto* check = new QCheckBox(parent);
  check->setChecked(node.value == kTrue);
  QObject::connect(check, &QCheckBox::clicked, check, [check, submit](bool on) {
    if (!submit(on ? kTrue : kFalse))
      check->setChecked(!on);
  });
  return check;
}

} // namespace

QWidget* kovPropertyEditors::create(const kovPropertyNode& node, const Submit& submit, QWidget* parent)
{
  QWidget* editor = nullptr;
  switch (node.kind) {
  case kovPropertyNode::Category:
  case kovPropertyNode::Text:
    return nullptr;
  case kovPropertyNode::String:
  case kovPropertyNode::Double:
    editor = lineEditor(node, submit, parent);
    break;
  case kovPropertyNode::Combo:
    editor = comboEditor(node, submit, parent);
    break;
  case kovPropertyNode::Bool:
    editor = boolEditor(node, submit, parent);
    break;
  case kovPropertyNode::Button: {
    auto* button = new QPushButton(node.visibleName, parent);
    QObject::connect(button, &QPushButton::clicked, button, [submit] { submit(QString()); });
    editor = button;
    break;
  }
  }
  editor->setObjectName(node.path);
  return editor;
}
