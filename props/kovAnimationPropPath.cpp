#include "props/kovAnimationPropPath.h"

#include <QStringList>

#include <limits>

namespace {

const QLatin1String kAnimation("Animation");
const QLatin1String kElement("Element");
const QLatin1String kRow("Row");
const QLatin1String kStartTangent("Start Tangent");
const QLatin1String kEndTangent("End Tangent");

// The 0-based index of "<prefix><n>", -1 when n is below 1 or beyond any
// count; false when the text is not the prefix followed by digits.
bool numbered(const QString& text, QLatin1String prefix, int& index)
{
  if (!text.startsWith(prefix) || text.size() == prefix.size())
    return false;
  const QStringRef digits = text.midRef(prefix.size());
  for (const QChar c : digits) {
    if (!c.isDigit() || c.unicode() > 127)
      return false;
  }
  bool ok = false;
  const qlonglong n = digits.toLongLong(&ok);
  index = ok && n >= 1 && n <= std::numeric_limits<int>::max() ? static_cast<int>(n - 1) : -1;
  return true;
}

} // namespace

bool kovAnimationPropPath::parse(const QString& path, kovAnimationPropPath& out)
{
  const QStringList parts = path.split(QLatin1Char('/'));
  kovAnimationPropPath parsed;
  parsed.name = parts.last();
  if (parsed.name.isEmpty())
    return false;
  if (parts.size() == 2 && parts.first() == kAnimation) {
    out = parsed;
    return true;
  }
  if (parts.size() < 2 || parts.size() > 3 || !numbered(parts.first(), kElement, parsed.element))
    return false;
  parsed.scope = ElementScope;
  if (parts.size() == 3) {
    const QString& middle = parts.at(1);
    if (middle == kStartTangent || middle == kEndTangent) {
      parsed.scope = TangentScope;
      parsed.endTangent = middle == kEndTangent;
    } else if (numbered(middle, kRow, parsed.row)) {
      parsed.scope = RowScope;
    } else {
      return false;
    }
  }
  out = parsed;
  return true;
}

QString kovAnimationPropPath::animationCategory()
{
  return kAnimation;
}

QString kovAnimationPropPath::elementCategory(int element)
{
  return kElement + QString::number(element + 1);
}

QString kovAnimationPropPath::rowCategory(int row)
{
  return kRow + QString::number(row + 1);
}

QString kovAnimationPropPath::tangentCategory(bool end)
{
  return end ? kEndTangent : kStartTangent;
}
