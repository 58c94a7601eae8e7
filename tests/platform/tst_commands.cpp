// The command stack, and how typed lines become words, keywords, numbers and
// points. Running commands as typed is checked through the host and the
// module's own commands.
#include "Ed/OdEdBaseUserIO.h"
#include "Ed/OdEdCommandStack.h"
#include "Ed/OdEdKeywordList.h"
#include "Ed/OdEdScriptWord.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

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

} // namespace

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
