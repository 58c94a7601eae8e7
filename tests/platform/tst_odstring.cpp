// The platform string: lossless conversion to and from UTF-16 and QString,
// formatting and comparison.
#include "Rx/OdError.h"
#include "Rx/OdString.h"

#include <QString>

#include <gtest/gtest.h>

TEST(OdStringConversion, everyUtf16SequenceRoundTrips)
{
  struct Case { const char* label; std::u16string units; };
  const Case cases[] = {
    { "empty", u"" },
    { "ascii", u"Camera Track" },
    { "latin and greek", u"Caf\u00e9 \u03b1\u03b2" },
    { "non-BMP pair", u"sun \U0001F31E rise" },
    { "lone high surrogate", std::u16string(u"a") + char16_t(0xD83C) + u"b" },
    { "lone low surrogate", std::u16string(u"a") + char16_t(0xDF1E) },
    { "reversed pair", std::u16string() + char16_t(0xDF1E) + char16_t(0xD83C) },
    { "embedded NUL", std::u16string(u"a\0b", 3) },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.label);
    const QString q = QString::fromUtf16(c.units.data(), static_cast<int>(c.units.size()));
    const OdString od = odFromQString(q);
    EXPECT_EQ(odToQString(od), q);
    EXPECT_EQ(od.toUtf16(), c.units);
    EXPECT_EQ(OdString::fromUtf16(c.units.data(), c.units.size()), od);
  }
}

TEST(OdStringConversion, supplementaryCharacterIsOneWideCharacter)
{
  const OdString od = odFromQString(QString::fromUtf8("\xF0\x9F\x8C\x9E"));
  ASSERT_EQ(od.getLength(), 1);
  EXPECT_EQ(static_cast<char32_t>(od.getAt(0)), U'\U0001F31E');
}

TEST(OdStringFormat, formatsWideStringsAndNumbers)
{
  OdString name(L"Camera");
  OdString text;
  text.format(L"%ls=\"%ls\" ", L"Name", name.c_str());
  EXPECT_EQ(text, OdString(L"Name=\"Camera\" "));
  text.format(L"Element%d", 12);
  EXPECT_EQ(text, OdString(L"Element12"));
}

TEST(OdStringFormat, longResultsAreNotTruncated)
{
  const std::wstring longText(5000, L'x');
  OdString text;
  text.format(L"[%ls]", longText.c_str());
  EXPECT_EQ(text.getLength(), 5002);
}

TEST(OdStringCompare, caseInsensitiveAndSearch)
{
  EXPECT_EQ(OdString(L"XBlock").iCompare(L"xblock"), 0);
  EXPECT_NE(OdString(L"XBlock").iCompare(L"xblocks"), 0);
  EXPECT_EQ(OdString(L"my xblock 1").find(L"xblock"), 3);
  EXPECT_EQ(OdString(L"abc").find(L"z"), -1);
  EXPECT_EQ(OdString(L"abcdef").mid(2, 3), OdString(L"cde"));
  EXPECT_EQ(OdString(L"abc").mid(7), OdString());
}

TEST(OdErrorText, messageOrCodeDescription)
{
  EXPECT_EQ(OdError(eNotOpenForWrite).description(), OdString(L"Not opened for write"));
  EXPECT_EQ(OdError(eInvalidInput, OdString(L"bad count")).description(), OdString(L"bad count"));
  EXPECT_EQ(OdError(eInvalidInput, OdString(L"bad count")).code(), eInvalidInput);
}
