#ifndef KOV_INTERACTIVE_USER_IO_H
#define KOV_INTERACTIVE_USER_IO_H

#include "Db/OdDbDatabase.h"
#include "Ed/OdDbUserIO.h"
#include "Ed/OdEdScriptWord.h"

#include <QString>

#include <functional>

class OdGsView;
class QEventLoop;

// The user input of commands run from the desktop's command line. Every
// prompt takes the next word the user typed (a line may carry several, split
// as script words, so a whole command with its answers runs straight
// through). With no word waiting, it shows the prompt and waits in a nested
// event loop until the user types a line, clicks an answer in the viewport or
// cancels; cancelling (Escape, ^C, the window closing, the application
// quitting) raises OdEdCancel.
class kovInteractiveUserIO : public OdDbUserIO {
public:
  // What the running prompt waits for, so that the viewport knows what a
  // click answers.
  enum class Waiting { Nothing, Text, Point, Objects };

  struct FrontEnd {
    // A line of the transcript: messages, and each prompt with its answer.
    std::function<void(const QString&)> output;
    // The prompt the user is asked now; empty when nothing is asked.
    std::function<void(const QString&)> prompt;
    // The objects selected in the viewport.
    std::function<OdDbObjectIdArray()> selection;
  };

  static OdSmartPtr<kovInteractiveUserIO> createObject(const FrontEnd& frontEnd, OdGsView* view);

  // A new command starts in database with the answers typed after its name:
  // forgets the answers and the last point of the previous one.
  void beginCommand(OdDbDatabase* database, const OdArray<OdEdScriptWord>& answers);
  void endCommand();

  // Queues the words of a line the user typed; an empty line is one empty
  // answer (Enter). False, with the reason in error, when the line does not
  // split into words (an open quote).
  bool typeLine(const QString& line, QString& error);
  // Answers the waiting prompt with one word (a clicked point or object).
  void answer(const QString& word);
  // Cancels the waiting prompt. Does nothing when none waits.
  void cancel();

  Waiting waiting() const { return m_waiting; }
  // The point answered last in the running command, for picking on its plane.
  bool hasLastPoint() const { return m_hasLastPoint; }
  const OdGePoint3d& lastPoint() const { return m_lastPoint; }
  // The words typed ahead that no prompt took; cleared by takeUnusedWords.
  QStringList takeUnusedWords();

  void putString(const OdString& string) override;
  OdGePoint3d getPoint(const OdString& prompt, int options = OdEd::kGptDefault,
                       const OdGePoint3d* pDefault = nullptr, const OdString& keywords = OdString::kEmpty,
                       OdEdPointTracker* pTracker = nullptr) override;
  // A selection made in the viewport before the prompt is the answer;
  // otherwise object handles (typed or clicked) until an empty answer.
  OdDbObjectIdArray select(const OdString& prompt = OdString::kEmpty, int options = OdEd::kSelDefault) override;

protected:
  OdString getInput(const OdString& prompt) override;

private:
  void waitForInput(const OdString& prompt);

  FrontEnd m_frontEnd;
  OdGsView* m_view = nullptr;
  OdDbDatabase* m_database = nullptr;
  OdArray<OdEdScriptWord> m_words;
  QEventLoop* m_loop = nullptr;
  bool m_cancelRequested = false;
  Waiting m_waiting = Waiting::Nothing;
  Waiting m_asking = Waiting::Text;
  OdGePoint3d m_lastPoint;
  bool m_hasLastPoint = false;
};

typedef OdSmartPtr<kovInteractiveUserIO> kovInteractiveUserIOPtr;

#endif
