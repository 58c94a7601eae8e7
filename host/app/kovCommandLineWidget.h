#ifndef KOV_COMMAND_LINE_WIDGET_H
#define KOV_COMMAND_LINE_WIDGET_H

#include <QStringList>
#include <QWidget>

class kovCommandRunner;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

// The command line: the transcript above the prompt and the line the user
// types in. Enter runs the line as a command, or answers the prompt of the
// command that waits; Up and Down bring back earlier lines; Escape cancels the
// running command.
class kovCommandLineWidget : public QWidget {
  Q_OBJECT
public:
  explicit kovCommandLineWidget(QWidget* parent = nullptr);

  // The runner lines go to; set once, before the user types.
  void setRunner(kovCommandRunner* runner);

  void appendHistory(const QString& text);
  // The prompt the running command asks; empty for the "Command:" prompt.
  void showPrompt(const QString& prompt);

  QPlainTextEdit* history() const { return m_history; }
  QLineEdit* input() const { return m_input; }
  QLabel* promptLabel() const { return m_prompt; }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void submit();
  void recall(int step);

  kovCommandRunner* m_runner = nullptr;
  QPlainTextEdit* m_history;
  QLabel* m_prompt;
  QLineEdit* m_input;
  QStringList m_recall;
  // Index into m_recall of the line shown; m_recall.size() for the new line.
  int m_recallIndex = 0;
};

#endif
