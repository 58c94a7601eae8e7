#include "Prop/OdPropContext.h"

#include <charconv>

namespace {

const OdChar* const kNodeOpener = L"<Prop ";
const OdChar* const kNodeCloser = L"/>\r\n";

OdString escaped(const OdString& value)
{
  OdString out;
  for (int i = 0; i < value.getLength(); ++i) {
    const OdChar c = value.getAt(i);
    switch (c) {
    case L'&':
      out += L"&amp;";
      break;
    case L'<':
      out += L"&lt;";
      break;
    case L'>':
      out += L"&gt;";
      break;
    case L'"':
      out += L"&quot;";
      break;
    default:
      if (c >= 0 && c < 0x20) {
        OdString ref;
        ref.format(L"&#%d;", static_cast<int>(c));
        out += ref;
      } else {
        out += c;
      }
      break;
    }
  }
  return out;
}

} // namespace

OdString OdPropContext::joinPath(const OdString& path, const OdString& name)
{
  return path.isEmpty() ? name : path + L"/" + name;
}

OdString OdPropContext::formatBool(bool value)
{
  return OdString(value ? L"true" : L"false");
}

OdString OdPropContext::formatDouble(double value)
{
  char buffer[64];
  const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof(buffer), value);
  return OdString(std::string(buffer, result.ptr).c_str());
}

OdString OdPropContext::currentPath() const
{
  OdString path;
  for (const OdString& category : m_categories)
    path = joinPath(path, category);
  return path;
}

void OdPropContext::closeNode()
{
  if (m_open.isEmpty())
    return;
  m_text += m_open;
  m_text += kNodeCloser;
  m_open.empty();
}

OdString OdPropContext::text() const
{
  return m_open.isEmpty() ? m_text : m_text + m_open + kNodeCloser;
}

OdPropContext& OdPropContext::addNode(const OdString& name, const OdString& type, const OdString& visibleName)
{
  ODA_ASSERT(!name.isEmpty() && name.find(L"/") < 0);
  closeNode();
  m_open = kNodeOpener;
  attribute(OdString(L"Name"), name);
  attribute(OdString(L"Type"), type);
  attribute(OdString(L"VisibleName"), visibleName);
  const OdString path = currentPath();
  if (!path.isEmpty())
    attribute(OdString(L"Path"), path);
  return *this;
}

OdPropContext& OdPropContext::beginCategory(const OdString& name, const OdString& visibleName)
{
  addNode(name, OdString(L"category"), visibleName);
  m_categories.push_back(name);
  return *this;
}

void OdPropContext::endCategory()
{
  ODA_ASSERT(!m_categories.empty());
  if (!m_categories.empty())
    m_categories.pop_back();
}

OdPropContext& OdPropContext::addString(const OdString& name, const OdString& visibleName, const OdString& value)
{
  return addNode(name, OdString(L"string"), visibleName).attribute(OdString(L"Value"), value);
}

OdPropContext& OdPropContext::addCombo(const OdString& name, const OdString& visibleName, const OdString& value)
{
  return addNode(name, OdString(L"combo"), visibleName).attribute(OdString(L"Value"), value);
}

OdPropContext& OdPropContext::addBool(const OdString& name, const OdString& visibleName, bool value)
{
  return addNode(name, OdString(L"bool"), visibleName).attribute(OdString(L"Value"), value);
}

OdPropContext& OdPropContext::addDouble(const OdString& name, const OdString& visibleName, double value)
{
  return addNode(name, OdString(L"double"), visibleName).attribute(OdString(L"Value"), value);
}

OdPropContext& OdPropContext::addButton(const OdString& name, const OdString& visibleName)
{
  return addNode(name, OdString(L"button"), visibleName);
}

OdPropContext& OdPropContext::attribute(const OdString& name, const OdString& value)
{
  ODA_ASSERT(!m_open.isEmpty());
  if (m_open.isEmpty())
    return *this;
  m_open += name;
  m_open += L"=\"";
  m_open += escaped(value);
  m_open += L"\" ";
  return *this;
}

OdPropContext& OdPropContext::attribute(const OdString& name, bool value)
{
  return attribute(name, formatBool(value));
}

OdPropContext& OdPropContext::attribute(const OdString& name, double value)
{
  return attribute(name, formatDouble(value));
}
