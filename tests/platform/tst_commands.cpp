#include "Db/OdDbDatabase.h"
#include "Db/OdDbModule.h"
#include "Ed/OdDbCommandContext.h"
#include "Ed/OdDbScriptUserIO.h"
#include "Ed/OdEdBaseUserIO.h"
#include "Ed/OdEdCommandLine.h"
#include "Ed/OdEdCommandStack.h"
#include "Ed/OdEdEmptyInput.h"
#include "Ed/OdEdKeyword.h"
#include "Ed/OdEdKeywordList.h"
#include "Ed/OdEdPointTracker.h"
#include "Ed/OdEdScriptWord.h"
#include "Rx/OdRxDictionary.h"
#include "Rx/OdStaticRxObject.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

const OdChar* const kGroup = L"KOVTEST";

// The host's console: keeps the transcript, answers nothing.
class Transcript : public OdEdBaseUserIO {
public:
  std::vector<OdString> lines;
  void putString(const OdString& string) override { lines.push_back(string); }
  bool contains(const OdChar* line) const
  {
    for (const OdString& l : lines) {
      if (l == line)
        return true;
    }
    return false;
  }

protected:
  OdString getInput(const OdString&) override { throw OdEdCancel(); }
};

class LastPointTracker : public OdEdPointTracker {
public:
  OdGePoint3d last;
  int calls = 0;
  void setValue(const OdGePoint3d& value) override
  {
    last = value;
    ++calls;
  }
  int addDrawables(OdGsView*) override { return 0; }
  void removeDrawables(OdGsView*) override {}
};

// A first point, then next points until Finish (or Enter); Undo takes back
// the last next point. The path is kept only when the command finishes.
class PathCommand : public OdEdCommand {
public:
  std::vector<OdGePoint3d> result;
  bool finished = false;
  LastPointTracker* tracker = nullptr;

  const OdString groupName() const override { return OdString(kGroup); }
  const OdString globalName() const override { return OdString(L"testcmd"); }
  const OdString localName() const override { return OdString(L"pfad"); }
  void execute(OdEdCommandContext* pCmdCtx) override
  {
    OdEdUserIO* io = pCmdCtx->userIO();
    std::vector<OdGePoint3d> path { io->getPoint(OdString(L"Specify first point:")) };
    for (;;) {
      try {
        path.push_back(io->getPoint(OdString(L"Specify next point or [Finish/Undo]:"), OdEd::kGptRubberBand, nullptr,
                                    OdString(L"Finish Undo"), tracker));
      } catch (const OdEdKeyword& keyword) {
        if (keyword.keywordIndex() == 0)
          break;
        if (path.size() > 1)
          path.pop_back();
        else
          io->putString(OdString(L"Nothing to undo."));
      } catch (const OdEdEmptyInput&) {
        break;
      }
    }
    result = path;
    finished = true;
  }
};

// Asks one value of each kind.
class AskCommand : public OdEdCommand {
public:
  double duration = 0.0;
  int frames = 0;
  OdString name;
  int mode = -1;

  const OdString groupName() const override { return OdString(kGroup); }
  const OdString globalName() const override { return OdString(L"askcmd"); }
  void execute(OdEdCommandContext* pCmdCtx) override
  {
    OdEdUserIO* io = pCmdCtx->userIO();
    duration = io->getReal(OdString(L"Duration <5>:"), OdEd::kInpNonZero | OdEd::kInpNonNeg, 5.0);
    frames = io->getInt(OdString(L"Frames <25>:"), OdEd::kInpNonNeg, 25);
    name = io->getString(OdString(L"Name:"));
    mode = io->getKeyword(OdString(L"At the end [Close/Continue] <Continue>:"), OdString(L"Close Continue"), 1);
  }
};

// Needs a drawing: takes the model space's handle from it.
class DrawingCommand : public OdEdCommand {
public:
  OdDbHandle modelSpace;

  const OdString groupName() const override { return OdString(kGroup); }
  const OdString globalName() const override { return OdString(L"needsdb"); }
  void execute(OdEdCommandContext* pCmdCtx) override
  {
    OdDbCommandContextPtr ctx(pCmdCtx);
    modelSpace = ctx->database()->getModelSpaceId().getHandle();
  }
};

class SelectCommand : public OdEdCommand {
public:
  OdDbObjectIdArray picked;

  const OdString groupName() const override { return OdString(kGroup); }
  const OdString globalName() const override { return OdString(L"selcmd"); }
  void execute(OdEdCommandContext* pCmdCtx) override
  {
    OdDbCommandContextPtr ctx(pCmdCtx);
    picked = ctx->dbUserIO()->select();
  }
};

class NamedCommand : public OdEdCommand {
public:
  NamedCommand(const OdChar* group, const OdChar* global, const OdChar* local)
    : m_group(group), m_global(global), m_local(local)
  {
  }
  const OdString groupName() const override { return m_group; }
  const OdString globalName() const override { return m_global; }
  const OdString localName() const override { return m_local; }
  void execute(OdEdCommandContext*) override {}

private:
  OdString m_group, m_global, m_local;
};

OdEdCommandPtr named(const OdChar* group, const OdChar* global, const OdChar* local = nullptr)
{
  return OdEdCommandPtr(new NamedCommand(group, global, local ? local : global));
}

OdResult raisedCode(const std::function<void()>& action)
{
  try {
    action();
  } catch (const OdError& e) {
    return e.code();
  }
  return eOk;
}

} // namespace

class CommandLine : public ::testing::Test {
protected:
  void SetUp() override
  {
    for (OdEdCommand* command : { static_cast<OdEdCommand*>(&path), static_cast<OdEdCommand*>(&ask),
                                  static_cast<OdEdCommand*>(&drawing), static_cast<OdEdCommand*>(&select) })
      odedRegCmds()->addCommand(command);
  }
  void TearDown() override { odedRegCmds()->removeGroup(OdString(kGroup)); }

  OdResult run(const OdChar* line, OdRxObject* database = nullptr)
  {
    console.lines.clear();
    message.empty();
    return odedExecuteCommandLine(OdString(line), database, &console, &message);
  }

  OdStaticRxObject<PathCommand> path;
  OdStaticRxObject<AskCommand> ask;
  OdStaticRxObject<DrawingCommand> drawing;
  OdStaticRxObject<SelectCommand> select;
  OdStaticRxObject<Transcript> console;
  OdString message;
};

TEST_F(CommandLine, PointsKeywordsAndCancelDriveTheCommand)
{
  struct Case {
    const OdChar* line;
    OdResult code;
    std::vector<OdGePoint3d> points; // empty: the command did not finish
  };
  const OdGePoint3d a(1, 2, 3), b(4, 5, 6), c(7, 8, 9);
  const Case cases[] = {
    { L"testcmd 1,2,3 4,5,6 Finish", eOk, { a, b } },
    { L"testcmd 1,2,3 4,5,6 u 7,8,9 finish", eOk, { a, c } },
    { L"testcmd 1,2,3 u 7,8,9 finish", eOk, { a, c } },
    { L"TestCmd 1,2,3 4,5,6 F", eOk, { a, b } },
    { L"testcmd 1,2,3 4,5,6 \"\"", eOk, { a, b } },
    { L"testcmd 1,2,3 4,5,6 \"finish\"", eOk, { a, b } },
    { L"testcmd 1,2 3.5,-4e1 f", eOk, { OdGePoint3d(1, 2, 0), OdGePoint3d(3.5, -40, 0) } },
    { L"testcmd +1,.5,-0 f", eOk, { OdGePoint3d(1, 0.5, 0) } },
    { L"testcmd 1,2,3 garbage 4,5,6 f", eOk, { a, b } },
    { L"testcmd nan,1,2 inf,0,0 1e999,0,0 1,2,3 NaN,NaN,NaN 4,5,6 f", eOk, { a, b } },
    { L"testcmd 1,2,3,4 1,,2 ,1 1 0x10,0 1,2,3 f", eOk, { a } },
    { L"_testcmd 1,2,3 f", eOk, { a } },
    { L"PFAD 1,2,3 f", eOk, { a } },
    { L"testcmd 1,2,3 ^C", eUserBreak, {} },
    { L"testcmd 1,2,3 4,5,6", eUserBreak, {} },
    { L"testcmd", eUserBreak, {} },
    { L"testcmd \"\"", eUserBreak, {} },
    { L"^C", eUserBreak, {} },
    { L"_pfad 1,2,3 f", eKeyNotFound, {} },
    { L"nosuchcmd 1,2,3", eKeyNotFound, {} },
    { L"testcmd \"1,2,3 f", eInvalidInput, {} },
    { L"testcmd 1,2,3 \"f\"x", eInvalidInput, {} },
  };
  for (const Case& tc : cases) {
    SCOPED_TRACE(OdString(tc.line).toUtf8());
    path.result.clear();
    path.finished = false;
    EXPECT_EQ(run(tc.line), tc.code) << message.toUtf8();
    EXPECT_EQ(path.finished, !tc.points.empty());
    ASSERT_EQ(path.result.size(), tc.points.size());
    for (size_t i = 0; i < tc.points.size(); ++i) {
      EXPECT_DOUBLE_EQ(path.result[i].x, tc.points[i].x);
      EXPECT_DOUBLE_EQ(path.result[i].y, tc.points[i].y);
      EXPECT_DOUBLE_EQ(path.result[i].z, tc.points[i].z);
    }
    if (tc.code == eUserBreak) {
      EXPECT_EQ(console.lines.back(), OdString(L"*Cancel*"));
    }
  }
}

TEST_F(CommandLine, TranscriptEchoesPromptsAnswersAndMessages)
{
  ASSERT_EQ(run(L"testcmd 1,2,3 xyz \"\""), eOk);
  const std::vector<OdString> expected {
    OdString(L"Command: testcmd"),
    OdString(L"Specify first point: 1,2,3"),
    OdString(L"Specify next point or [Finish/Undo]: xyz"),
    OdString(L"Point or option keyword required."),
    OdString(L"Specify next point or [Finish/Undo]: \"\""),
  };
  EXPECT_EQ(console.lines, expected);

  ASSERT_EQ(run(L"testcmd 1,2,3 u 4,5,6"), eUserBreak);
  EXPECT_TRUE(console.contains(L"Nothing to undo."));
  EXPECT_EQ(console.lines[console.lines.size() - 2], OdString(L"Specify next point or [Finish/Undo]:"));

  ASSERT_EQ(run(L"testcmd 1e999,0"), eUserBreak);
  EXPECT_TRUE(console.contains(L"Point required."));
}

TEST_F(CommandLine, ErrorsComeBackWithTheirMessage)
{
  EXPECT_EQ(run(L"nosuchcmd"), eKeyNotFound);
  EXPECT_NE(message.find(L"Unknown command"), -1);
  EXPECT_NE(message.find(L"nosuchcmd"), -1);

  EXPECT_EQ(run(L"testcmd 1,2,3 f extra words"), eInvalidInput);
  EXPECT_TRUE(path.finished);
  EXPECT_NE(message.find(L"extra words"), -1);

  EXPECT_EQ(run(L"testcmd \"1,2"), eInvalidInput);
  EXPECT_NE(message.find(L"not closed"), -1);

  EXPECT_EQ(run(L"   "), eOk);
  EXPECT_TRUE(console.lines.empty());
}

TEST_F(CommandLine, NumbersTextAndKeywordPromptsReadTheirAnswers)
{
  ASSERT_EQ(run(L"askcmd 2.5 30 \"two words\" cl"), eOk) << message.toUtf8();
  EXPECT_DOUBLE_EQ(ask.duration, 2.5);
  EXPECT_EQ(ask.frames, 30);
  EXPECT_EQ(ask.name, OdString(L"two words"));
  EXPECT_EQ(ask.mode, 0);

  ASSERT_EQ(run(L"askcmd \"\" \"\" \"\" \"\""), eOk) << message.toUtf8();
  EXPECT_DOUBLE_EQ(ask.duration, 5.0);
  EXPECT_EQ(ask.frames, 25);
  EXPECT_TRUE(ask.name.isEmpty());
  EXPECT_EQ(ask.mode, 1);

  ASSERT_EQ(run(L"askcmd 0 -1 abc 7 1.5 -3 12 \"say \"\"hi\"\"\" c x CONT"), eOk) << message.toUtf8();
  EXPECT_DOUBLE_EQ(ask.duration, 7.0);
  EXPECT_EQ(ask.frames, 12);
  EXPECT_EQ(ask.name, OdString(L"say \"hi\""));
  EXPECT_EQ(ask.mode, 1);
  for (const OdChar* refusal : { L"Value must not be zero.", L"Value must not be negative.", L"Number required.",
                                 L"Integer required.", L"Ambiguous option keyword.", L"Invalid option keyword." })
    EXPECT_TRUE(console.contains(refusal)) << OdString(refusal).toUtf8();
}

TEST_F(CommandLine, PointTrackerSeesEachPointTaken)
{
  OdStaticRxObject<LastPointTracker> tracker;
  path.tracker = &tracker;
  ASSERT_EQ(run(L"testcmd 1,2,3 4,5,6 7,8,9 f"), eOk);
  EXPECT_EQ(tracker.calls, 2);
  EXPECT_DOUBLE_EQ(tracker.last.z, 9.0);
}

TEST_F(CommandLine, DrawingCommandsGetTheDrawingOrFailWithoutOne)
{
  odInitialize();
  {
    const OdDbDatabasePtr db = OdDbDatabase::createObject();
    ASSERT_EQ(run(L"needsdb", db.get()), eOk) << message.toUtf8();
    EXPECT_EQ(drawing.modelSpace, db->getModelSpaceId().getHandle());

    EXPECT_EQ(run(L"needsdb"), eNoDatabase);
    EXPECT_FALSE(message.isEmpty());

    const OdRxDictionaryPtr notADrawing = OdRxDictionary::createObject();
    EXPECT_EQ(run(L"needsdb", notADrawing.get()), eNotThatKindOfClass);
  }
  odUninitialize();
}

TEST_F(CommandLine, SelectionTakesHandlesUntilEnter)
{
  odInitialize();
  {
    const OdDbDatabasePtr db = OdDbDatabase::createObject();
    const OdDbObjectId space = db->getModelSpaceId();
    const OdDbObjectId table = db->getBlockTableId();
    const OdString line = OdString(L"selcmd ") + space.getHandle().ascii() + L" zz FFFF " + space.getHandle().ascii()
        + L" " + table.getHandle().ascii() + L" \"\"";
    ASSERT_EQ(odedExecuteCommandLine(line, db.get(), &console, &message), eOk) << message.toUtf8();
    ASSERT_EQ(select.picked.size(), 2u);
    EXPECT_EQ(select.picked[0], space);
    EXPECT_EQ(select.picked[1], table);
    EXPECT_TRUE(console.contains(L"No object has the handle zz."));
    EXPECT_TRUE(console.contains(L"No object has the handle FFFF."));

    EXPECT_EQ(run(L"selcmd 1 \"\""), eNoDatabase);
  }
  odUninitialize();
}

TEST(CommandContext, PlainContextIsRefusedByDrawingCommands)
{
  OdStaticRxObject<Transcript> console;
  OdStaticRxObject<DrawingCommand> command;
  const OdEdCommandContextPtr plain = OdEdCommandContext::createObject(&console);
  EXPECT_THROW(command.execute(plain), OdError_NotThatKindOfClass);
  EXPECT_EQ(plain->userIO(), &console);
  EXPECT_EQ(plain->baseDatabase(), nullptr);
}

TEST(CommandContext, DrawingContextWithoutDrawingRaisesNoDatabase)
{
  const OdDbUserIOPtr io = OdDbScriptUserIO::createObject(OdArray<OdEdScriptWord>(), nullptr, nullptr);
  const OdDbCommandContextPtr ctx = OdDbCommandContext::createObject(io);
  EXPECT_EQ(raisedCode([&] { ctx->database(); }), eNoDatabase);
  EXPECT_EQ(ctx->dbUserIO(), io.get());
  EXPECT_EQ(raisedCode([] { OdEdCommandContext::createObject(nullptr); }), eNullPtr);
  EXPECT_EQ(raisedCode([] { OdDbCommandContext::createObject(nullptr); }), eNullPtr);
}

TEST(CommandStack, AddLookupAndRemove)
{
  const OdEdCommandStackPtr stack = OdEdCommandStack::createObject();
  stack->addCommand(named(L"G1", L"Alpha", L"Erste"));
  stack->addCommand(named(L"G1", L"Beta"));
  stack->addCommand(named(L"G2", L"Gamma", L"alpha"));

  struct Case {
    const OdChar* name;
    int flags;
    const OdChar* group;
    const OdChar* found; // global name, or null
  };
  const Case cases[] = {
    { L"alpha", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", L"Alpha" },
    { L"ALPHA", OdEdCommandStack::kLocal, L"", L"Gamma" },
    { L"erste", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", L"Alpha" },
    { L"erste", OdEdCommandStack::kGlobal, L"", nullptr },
    { L"_erste", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", nullptr },
    { L"_BETA", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", L"Beta" },
    { L"alpha", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"g2", L"Gamma" },
    { L"beta", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"G2", nullptr },
    { L"delta", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", nullptr },
    { L"", OdEdCommandStack::kGlobal | OdEdCommandStack::kLocal, L"", nullptr },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(OdString(c.name).toUtf8());
    const OdEdCommandPtr found = stack->lookupCmd(OdString(c.name), c.flags, OdString(c.group));
    if (c.found) {
      ASSERT_FALSE(found.isNull());
      EXPECT_EQ(found->globalName(), OdString(c.found));
    } else {
      EXPECT_TRUE(found.isNull());
    }
  }

  const OdArray<OdEdCommandPtr> all = stack->commands();
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all[2]->globalName(), OdString(L"Gamma"));

  EXPECT_EQ(stack->removeCmd(OdString(L"g1"), OdString(L"BETA")), eOk);
  EXPECT_TRUE(stack->lookupCmd(OdString(L"beta")).isNull());
  EXPECT_EQ(stack->removeCmd(OdString(L"G1"), OdString(L"Beta")), eKeyNotFound);
  EXPECT_EQ(stack->removeCmd(OdString(L"G2"), OdString(L"Alpha")), eKeyNotFound);
  EXPECT_EQ(stack->removeGroup(OdString(L"G1")), eOk);
  EXPECT_TRUE(stack->lookupCmd(OdString(L"Erste")).isNull());
  EXPECT_FALSE(stack->lookupCmd(OdString(L"gamma")).isNull());
  EXPECT_EQ(stack->removeGroup(OdString(L"G1")), eKeyNotFound);
}

TEST(CommandStack, RefusesDuplicateAndUnusableNames)
{
  const OdEdCommandStackPtr stack = OdEdCommandStack::createObject();
  stack->addCommand(named(L"G1", L"Alpha"));
  struct Case {
    OdEdCommandPtr command;
    OdResult code;
  };
  const Case cases[] = {
    { named(L"G1", L"Alpha"), eDuplicateKey },
    { named(L"G2", L"ALPHA"), eDuplicateKey },
    { named(L"G2", L""), eInvalidInput },
    { named(L"G2", L"two words"), eInvalidInput },
    { OdEdCommandPtr(), eNullPtr },
  };
  for (const Case& c : cases)
    EXPECT_EQ(raisedCode([&] { stack->addCommand(c.command); }), c.code);
  EXPECT_EQ(stack->commands().size(), 1u);

  try {
    stack->addCommand(named(L"G2", L"alpha"));
    FAIL() << "duplicate accepted";
  } catch (const OdError& e) {
    EXPECT_NE(e.description().find(L"G1"), -1);
  }
}

TEST(CommandStack, ExecuteRunsByNameAndRefusesUnknownNames)
{
  // Declared before the stack, which holds it, so that it outlives the stack.
  OdStaticRxObject<AskCommand> ask;
  OdStaticRxObject<Transcript> console;
  const OdEdCommandStackPtr stack = OdEdCommandStack::createObject();
  stack->addCommand(&ask);
  const OdEdCommandContextPtr ctx = OdEdCommandContext::createObject(&console);
  // The console answers nothing: the command is cancelled at its first prompt.
  EXPECT_THROW(stack->executeCommand(OdString(L"ASKCMD"), ctx), OdEdCancel);
  try {
    stack->executeCommand(OdString(L"nothing"), ctx);
    FAIL() << "unknown command ran";
  } catch (const OdError& e) {
    EXPECT_EQ(e.code(), eKeyNotFound);
    EXPECT_NE(e.description().find(L"Unknown command"), -1);
  }
}

TEST(CommandStack, ProcessStackLivesInTheSystemRegistry)
{
  const OdEdCommandStackPtr stack = odedRegCmds();
  EXPECT_EQ(odedRegCmds().get(), stack.get());
  EXPECT_EQ(OdEdCommandStack::cast(odrxSysRegistry()->getAt(OdString(L"OdEdCommandStack")).get()).get(), stack.get());
}

TEST(ScriptWords, SplitsOnBlanksAndHonoursQuotes)
{
  struct Case {
    const OdChar* line;
    std::vector<OdString> texts;
  };
  const Case cases[] = {
    { L"a  b\tc", { OdString(L"a"), OdString(L"b"), OdString(L"c") } },
    { L"\"two words\" x", { OdString(L"two words"), OdString(L"x") } },
    { L"\"\" \"\"", { OdString(), OdString() } },
    { L"\"say \"\"hi\"\"\"", { OdString(L"say \"hi\"") } },
    { L"a\"b", { OdString(L"a\"b") } },
    { L"", {} },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(OdString(c.line).toUtf8());
    OdArray<OdEdScriptWord> words;
    OdString error;
    ASSERT_EQ(OdEdScriptWord::split(OdString(c.line), words, error), eOk);
    ASSERT_EQ(words.size(), c.texts.size());
    for (size_t i = 0; i < c.texts.size(); ++i)
      EXPECT_EQ(words[static_cast<unsigned>(i)].text, c.texts[i]);
  }

  OdArray<OdEdScriptWord> words;
  OdString error;
  ASSERT_EQ(OdEdScriptWord::split(OdString(L"^c \"^C\""), words, error), eOk);
  EXPECT_TRUE(words[0].isCancel());
  EXPECT_FALSE(words[1].isCancel());
  for (const OdChar* bad : { L"\"open", L"\"a\"b", L"x \"\"\"" })
    EXPECT_EQ(OdEdScriptWord::split(OdString(bad), words, error), eInvalidInput) << OdString(bad).toUtf8();
}

TEST(Keywords, MatchIgnoringCaseInFullOrByUnambiguousStart)
{
  const OdEdKeywordList list(OdString(L"  Finish Undo\tClose Clear Continue C "));
  ASSERT_EQ(list.count(), 6);
  struct Case {
    const OdChar* typed;
    int index;
  };
  const Case cases[] = {
    { L"finish", 0 }, { L"FIN", 0 }, { L"u", 1 },  { L"clo", 2 }, { L"CLE", 3 }, { L"co", 4 },
    { L"c", 5 },      { L"cl", -2 }, { L"x", -1 }, { L"", -1 },   { L"finished", -1 },
  };
  for (const Case& c : cases)
    EXPECT_EQ(list.match(OdString(c.typed)), c.index) << OdString(c.typed).toUtf8();
  EXPECT_TRUE(OdEdKeywordList(OdString(L" ")).isEmpty());
}

TEST(InputParsing, PointsAndNumbersAreDecimalAndFinite)
{
  struct Case {
    const OdChar* text;
    bool ok;
    double value;
  };
  const Case reals[] = {
    { L"2.5", true, 2.5 },  { L"-4e1", true, -40.0 }, { L"+3", true, 3.0 },    { L".5", true, 0.5 },
    { L"1E-3", true, 1e-3 }, { L"nan", false, 0 },    { L"inf", false, 0 },    { L"-infinity", false, 0 },
    { L"1e999", false, 0 }, { L"0x10", false, 0 },    { L" 1", false, 0 },     { L"1 ", false, 0 },
    { L"1,5", false, 0 },   { L"+", false, 0 },       { L"+-1", false, 0 },    { L"\x0661", false, 0 },
  };
  for (const Case& c : reals) {
    double value = -99.0;
    EXPECT_EQ(OdEdBaseUserIO::parseReal(OdString(c.text), value), c.ok) << OdString(c.text).toUtf8();
    if (c.ok)
      EXPECT_DOUBLE_EQ(value, c.value);
    else
      EXPECT_EQ(value, -99.0);
  }

  int n = 0;
  EXPECT_TRUE(OdEdBaseUserIO::parseInt(OdString(L"+42"), n));
  EXPECT_EQ(n, 42);
  EXPECT_FALSE(OdEdBaseUserIO::parseInt(OdString(L"1.0"), n));
  EXPECT_FALSE(OdEdBaseUserIO::parseInt(OdString(L"99999999999"), n));

  OdGePoint3d p;
  EXPECT_TRUE(OdEdBaseUserIO::parsePoint(OdString(L"1,-2"), p));
  EXPECT_EQ(p.z, 0.0);
  for (const OdChar* bad : { L"1", L"1,2,3,4", L"1,2,", L",1", L"1,nan", L"" })
    EXPECT_FALSE(OdEdBaseUserIO::parsePoint(OdString(bad), p)) << OdString(bad).toUtf8();
}
