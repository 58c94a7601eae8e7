#include "host/app/kovCommandLineWidget.h"

#include "host/app/kovCommandRunner.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

// Enough transcript to scroll back through a session without growing forever.
constexpr int kHistoryBlocks = 5000;

} // namespace

kovCommandLineWidget::kovCommandLineWidget(QWidget* parent)
  : QWidget(parent)
  , m_history(new QPlainTextEdit(this))
  , m_prompt(new QLabel(this))
  , m_input(new QLineEdit(this))
{
  setObjectName(QStringLiteral("CommandLine"));
  m_history->setObjectName(QStringLiteral("CommandHistory"));
  m_history->setReadOnly(true);
  m_history->setMaximumBlockCount(kHistoryBlocks);
  m_history->setFocusPolicy(Qt::ClickFocus);
  m_input->setObjectName(QStringLiteral("CommandInput"));
  m_input->installEventFilter(this);
  m_prompt->setObjectName(QStringLiteral("CommandPrompt"));

  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(m_prompt);
  row->addWidget(m_input, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  layout->addWidget(m_history, 1);
  layout->addLayout(row);
  setFocusProxy(m_input);
  showPrompt(QString());

  connect(m_input, &QLineEdit::returnPressed, this, &kovCommandLineWidget::submit);
}

void kovCommandLineWidget::setRunner(kovCommandRunner* runner)
{
  m_runner = runner;
}

void kovCommandLineWidget::appendHistory(const QString& text)
{
  m_history->appendPlainText(text);
  m_history->verticalScrollBar()->setValue(m_history->verticalScrollBar()->maximum());
}

void kovCommandLineWidget::showPrompt(const QString& prompt)
{
  m_prompt->setText(prompt.isEmpty() ? tr("Command:") : prompt);
}

void kovCommandLineWidget::submit()
{
  const QString line = m_input->text();
  m_input->clear();
  if (!line.trimmed().isEmpty() && (m_recall.isEmpty() || m_recall.last() != line))
    m_recall.append(line);
  m_recallIndex = m_recall.size();
  if (!m_runner)
    return;
  // The runner may wait in here for the answers of the command it starts.
  if (m_runner->isRunning())
    m_runner->type(line);
  else
    m_runner->run(line);
}

void kovCommandLineWidget::recall(int step)
{
  const int index = m_recallIndex + step;
  if (index < 0 || index > m_recall.size())
    return;
  m_recallIndex = index;
  m_input->setText(index == m_recall.size() ? QString() : m_recall.at(index));
}

bool kovCommandLineWidget::eventFilter(QObject* watched, QEvent* event)
{
  // With nothing typed, undo and redo keys are the drawing's, not the line's:
  // the window's shortcuts take them.
  if (watched == m_input && event->type() == QEvent::ShortcutOverride && m_input->text().isEmpty()) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
      event->ignore();
      return true;
    }
  }
  if (watched == m_input && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
      recall(-1);
      return true;
    case Qt::Key_Down:
      recall(1);
      return true;
    case Qt::Key_Escape:
      m_input->clear();
      m_recallIndex = m_recall.size();
      if (m_runner)
        m_runner->cancel();
      return true;
    default:
      break;
    }
  }
  return QWidget::eventFilter(watched, event);
}
