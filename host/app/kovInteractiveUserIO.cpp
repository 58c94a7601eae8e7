#include "host/app/kovInteractiveUserIO.h"

#include "host/app/OdGsView.h"

#include "Ed/OdEdCancel.h"

#include <QEventLoop>

namespace {

// Puts the waiting state back however the prompt ends (an answer, a keyword,
// a cancel), and detaches the tracker from the view.
class PromptScope {
public:
  PromptScope(kovInteractiveUserIO::Waiting& asking, kovInteractiveUserIO::Waiting now, OdGsView* view,
              OdEdPointTracker* tracker)
    : m_asking(asking)
    , m_before(asking)
    , m_view(tracker ? view : nullptr)
    , m_tracker(tracker)
  {
    m_asking = now;
    if (m_view)
      m_view->attachTracker(m_tracker);
  }
  ~PromptScope()
  {
    if (m_view)
      m_view->detachTracker(m_tracker);
    m_asking = m_before;
  }
  PromptScope(const PromptScope&) = delete;
  PromptScope& operator=(const PromptScope&) = delete;

private:
  kovInteractiveUserIO::Waiting& m_asking;
  kovInteractiveUserIO::Waiting m_before;
  OdGsView* m_view;
  OdEdPointTracker* m_tracker;
};

} // namespace

OdSmartPtr<kovInteractiveUserIO> kovInteractiveUserIO::createObject(const FrontEnd& frontEnd, OdGsView* view)
{
  OdSmartPtr<kovInteractiveUserIO> io(new kovInteractiveUserIO);
  io->m_frontEnd = frontEnd;
  io->m_view = view;
  return io;
}

void kovInteractiveUserIO::beginCommand(OdDbDatabase* database, const OdArray<OdEdScriptWord>& answers)
{
  m_database = database;
  m_words = answers;
  m_cancelRequested = false;
  m_hasLastPoint = false;
}

void kovInteractiveUserIO::endCommand()
{
  m_database = nullptr;
  m_hasLastPoint = false;
  if (m_frontEnd.prompt)
    m_frontEnd.prompt(QString());
}

bool kovInteractiveUserIO::typeLine(const QString& line, QString& error)
{
  OdArray<OdEdScriptWord> words;
  OdString reason;
  if (OdEdScriptWord::split(odFromQString(line), words, reason) != eOk) {
    error = odToQString(reason);
    return false;
  }
  if (words.isEmpty())
    words.append(OdEdScriptWord());
  for (const OdEdScriptWord& word : words)
    m_words.append(word);
  if (m_loop)
    m_loop->quit();
  return true;
}

void kovInteractiveUserIO::answer(const QString& word)
{
  OdEdScriptWord typed;
  typed.text = odFromQString(word);
  typed.typed = typed.text;
  m_words.append(typed);
  if (m_loop)
    m_loop->quit();
}

void kovInteractiveUserIO::cancel()
{
  if (!m_loop)
    return;
  m_cancelRequested = true;
  m_loop->quit();
}

QStringList kovInteractiveUserIO::takeUnusedWords()
{
  QStringList words;
  for (const OdEdScriptWord& word : m_words)
    words << odToQString(word.typed);
  m_words.clear();
  return words;
}

void kovInteractiveUserIO::putString(const OdString& string)
{
  if (m_frontEnd.output)
    m_frontEnd.output(odToQString(string));
}

void kovInteractiveUserIO::waitForInput(const OdString& prompt)
{
  if (m_frontEnd.prompt)
    m_frontEnd.prompt(odToQString(prompt));
  QEventLoop loop;
  m_loop = &loop;
  m_waiting = m_asking;
  loop.exec();
  m_waiting = Waiting::Nothing;
  m_loop = nullptr;
  if (m_frontEnd.prompt)
    m_frontEnd.prompt(QString());
  // A loop that ends without an answer was ended by the application quitting.
  if (m_cancelRequested || m_words.isEmpty()) {
    m_cancelRequested = false;
    m_words.clear();
    putString(prompt);
    throw OdEdCancel();
  }
}

OdString kovInteractiveUserIO::getInput(const OdString& prompt)
{
  if (m_words.isEmpty())
    waitForInput(prompt);
  const OdEdScriptWord word = m_words.first();
  m_words.removeAt(0);
  putString(prompt.isEmpty() ? word.typed : prompt + L" " + word.typed);
  if (word.isCancel()) {
    m_words.clear();
    throw OdEdCancel();
  }
  return word.text;
}

OdGePoint3d kovInteractiveUserIO::getPoint(const OdString& prompt, int options, const OdGePoint3d* pDefault,
                                           const OdString& keywords, OdEdPointTracker* pTracker)
{
  const PromptScope scope(m_asking, Waiting::Point, m_view, pTracker);
  const OdGePoint3d point = OdDbUserIO::getPoint(prompt, options, pDefault, keywords, pTracker);
  m_lastPoint = point;
  m_hasLastPoint = true;
  return point;
}

OdDbObjectIdArray kovInteractiveUserIO::select(const OdString& prompt, int options)
{
  if (!m_database)
    throw OdError(eNoDatabase, OdString(L"Selecting objects needs a drawing"));
  OdDbObjectIdArray ids;
  if (m_frontEnd.selection) {
    for (const OdDbObjectId& id : m_frontEnd.selection()) {
      if (id.isValid() && id.database() == m_database && !ids.contains(id))
        ids.append(id);
      if (!ids.isEmpty() && (options & OdEd::kSelSingleEntity))
        break;
    }
  }
  if (!ids.isEmpty()) {
    OdString found;
    found.format(L"%d found (the objects selected in the view)", static_cast<int>(ids.size()));
    putString(found);
    return ids;
  }

  const PromptScope scope(m_asking, Waiting::Objects, m_view, nullptr);
  return selectByHandles(m_database, prompt, options, ids);
}
