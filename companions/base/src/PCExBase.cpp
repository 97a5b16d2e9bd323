#include <znbl64/PCExBase.h>

#include <charconv>
#include <cstring>
#include <sstream>
#include <system_error>
#include <vector>

#include <pugixml.hpp>

struct PCExBase::Impl {
  pugi::xml_document doc;
  std::vector<pugi::xml_node> open;  // open[0] is the document, back() the current element

  pugi::xml_node Cur() const { return open.back(); }
};

namespace {

// pugixml writes any name it is given; a name that is not an XML name would make a document that
// does not read back, so the storing side refuses it.
bool IsXmlName(const char* s) {
  if (s == nullptr || *s == '\0') return false;
  auto start = [](unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || c >= 0x80;
  };
  if (!start(static_cast<unsigned char>(*s))) return false;
  for (++s; *s != '\0'; ++s) {
    const auto c = static_cast<unsigned char>(*s);
    if (!start(c) && !(c >= '0' && c <= '9') && c != '-' && c != '.') return false;
  }
  return true;
}

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

const char* SkipSpace(const char* p, const char* end) {
  while (p != end && IsSpace(*p)) ++p;
  return p;
}

// Reads count numbers from text, into out when it is given; false for a short text, a word that is
// not a number, or (with exact) anything but space after the count-th number. Run once without
// out to validate, so that a failure writes nothing.
bool ParseDoubles(const char* text, int count, bool exact, double* out) {
  const char* p = text;
  const char* end = text + std::strlen(text);
  for (int k = 0; k < count; ++k) {
    p = SkipSpace(p, end);
    double v = 0.0;
    const auto [q, ec] = std::from_chars(p, end, v);
    if (ec != std::errc() || (q != end && !IsSpace(*q))) return false;
    if (out != nullptr) out[k] = v;
    p = q;
  }
  return !exact || SkipSpace(p, end) == end;
}

// Whether node is elem or lies inside it.
bool IsWithin(pugi::xml_node node, pugi::xml_node elem) {
  for (; node; node = node.parent())
    if (node == elem) return true;
  return false;
}

}  // namespace

PCExBase::PCExBase() = default;
PCExBase::~PCExBase() = default;

void PCExBase::StartStoring() {
  m_pImpl = std::make_unique<Impl>();
  m_pImpl->open.assign(1, m_pImpl->doc);
  m_eMode = eStoring;
}

bool PCExBase::Adopt(bool parsed) {
  if (parsed && m_pImpl->doc.document_element()) {
    m_pImpl->open.assign(1, m_pImpl->doc);
    m_eMode = eLoading;
    return true;
  }
  m_pImpl.reset();
  m_eMode = eNone;
  return false;
}

bool PCExBase::LoadFile(const char* path) {
  m_pImpl = std::make_unique<Impl>();
  return Adopt(path != nullptr && m_pImpl->doc.load_file(path));
}

bool PCExBase::LoadString(const char* xml) {
  m_pImpl = std::make_unique<Impl>();
  return Adopt(xml != nullptr && m_pImpl->doc.load_string(xml));
}

bool PCExBase::SaveFile(const char* path) const {
  return m_eMode != eNone && path != nullptr && m_pImpl->doc.save_file(path, "  ");
}

bool PCExBase::SaveString(std::string& out) const {
  if (m_eMode == eNone) return false;
  std::ostringstream os;
  m_pImpl->doc.save(os, "  ");
  out = os.str();
  return true;
}

bool PCExBase::PersistElement(const char* name, bool create) {
  if (m_eMode == eNone || name == nullptr) return false;
  pugi::xml_node cur = m_pImpl->Cur();
  pugi::xml_node elem;
  if (IsStoring() && create) {
    if (IsXmlName(name)) elem = cur.append_child(name);
  } else {
    elem = cur.child(name);
  }
  if (!elem) return false;
  m_pImpl->open.push_back(elem);
  return true;
}

bool PCExBase::PopElement(bool remove) {
  if (m_eMode == eNone || m_pImpl->open.size() < 2) return false;
  const pugi::xml_node elem = m_pImpl->Cur();
  m_pImpl->open.pop_back();
  if (!remove) return true;
  // Push may have opened elements out of document order; none of them may be left dangling.
  for (const pugi::xml_node& o : m_pImpl->open)
    if (IsWithin(o, elem)) return false;
  return elem.parent().remove_child(elem);
}

PCElem PCExBase::GetCurElem() const {
  if (m_eMode == eNone) return {};
  return {m_pImpl->Cur().internal_object()};
}

PCElem PCExBase::FindChildElem(PCElem parent, const char* name) const {
  if (m_eMode == eNone || !parent || name == nullptr) return {};
  return {pugi::xml_node(parent.node).child(name).internal_object()};
}

bool PCExBase::Push(PCElem elem) {
  if (m_eMode == eNone || !elem) return false;
  const pugi::xml_node node(elem.node);
  if (node.type() != pugi::node_element || node.root() != m_pImpl->doc) return false;
  m_pImpl->open.push_back(node);
  return true;
}

int PCExBase::GetChildCount(const char* name) const {
  if (m_eMode == eNone) return 0;
  int n = 0;
  for (const pugi::xml_node& c : m_pImpl->Cur().children())
    if (c.type() == pugi::node_element && (name == nullptr || std::strcmp(c.name(), name) == 0)) ++n;
  return n;
}

bool PCExBase::PushData(const char* name, const double* data, int count) {
  if (!IsStoring() || !IsXmlName(name) || count < 0 || (count > 0 && data == nullptr)) return false;
  pugi::xml_node cur = m_pImpl->Cur();
  if (cur.type() != pugi::node_element) return false;
  std::string text;
  char buf[32];  // the longest shortest form, "-2.2250738585072014e-308", has 24 characters
  for (int k = 0; k < count; ++k) {
    const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, data[k]);
    if (k > 0) text += ' ';
    text.append(buf, end);
  }
  pugi::xml_attribute attr = cur.attribute(name);
  if (!attr) attr = cur.append_attribute(name);
  return attr.set_value(text.c_str());
}

bool PCExBase::ReadData(const char* name, double* data, int count, bool exact) const {
  if (m_eMode == eNone || name == nullptr || count < 0 || (count > 0 && data == nullptr)) return false;
  const pugi::xml_attribute attr = m_pImpl->Cur().attribute(name);
  if (!attr) return false;
  if (!ParseDoubles(attr.value(), count, exact, nullptr)) return false;
  return ParseDoubles(attr.value(), count, exact, data);
}
