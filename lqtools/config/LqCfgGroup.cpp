// Groups of a configuration tree: copying, editing, reading a body and path lookup.
#include <cstdarg>

#include "lqtools/config/LqCfgFile.h"
#include "lqtools/config/detail/GroupPath.h"
#include "lqtools/platform/WideFormat.h"

namespace lq::detail {

LqWString FormatGroupPath(const char16_t* format, va_list args) {
  char16_t path[kGroupPathUnits];
  lq::detail::vswprintf(path, kGroupPathUnits, format, args);
  return LqWString(path);
}

}  // namespace lq::detail

namespace {

struct PathStep {
  LqWString name;
  LqWString optionName;
  LqWString optionValue;
  LqWString rest;
};

LqWString Part(const LqWString& text, int start, int count) { return text.Mid(start, count); }
LqWString After(const LqWString& text, int position) {
  return text.Mid(position, text.Length() - position);
}

// "name[:option='value'][/rest]". Characters are read through the string's checked index, so a
// path that ends in ':' reaches past the terminator and throws "Index out of bounds!".
bool SplitPath(const LqWString& path, PathStep& step) {
  const int length = path.Length();
  if (length == 0) return true;
  int start = 0;
  int count = 0;
  for (;;) {
    const char16_t c = path[start + count];
    if (c == u'/') {
      step.name = Part(path, start, count);
      step.rest = After(path, start + count + 1);
      return true;
    }
    if (c == u':') {
      step.name = Part(path, start, count);
      start += count + 1;
      // Kept: the first character after ':' is not examined and belongs to the option name.
      count = 1;
      continue;
    }
    if (c == u'=') {
      step.optionName = Part(path, start, count);
      break;
    }
    ++count;
    if (start + count >= length) {
      // The whole path is the name, whatever was split before.
      step.name = path;
      step.optionName = u"";
      return true;
    }
  }
  const int equals = start + count;
  if (equals + 2 >= length || path[equals + 1] != u'\'') return false;
  const int closing = path.Find(u'\'', equals + 2);
  if (closing < 0) return false;
  step.optionValue = Part(path, equals + 2, closing - equals - 2);
  if (closing == length - 1) return true;
  if (path[closing + 1] != u'/') return false;
  step.rest = After(path, closing + 2);
  return true;
}

}  // namespace

LqCfgFile::LqGroup::LqGroup(const LqGroup& other) : m_name(other.m_name) { CopyChildren(other); }

LqCfgFile::LqGroup& LqCfgFile::LqGroup::operator=(const LqGroup& other) {
  if (this == &other) return *this;
  Reset();
  m_name = other.m_name;
  CopyChildren(other);
  return *this;
}

void LqCfgFile::LqGroup::CopyChildren(const LqGroup& other) {
  for (const LqGroup* group : other.m_groups)
    m_groups.push_back(new LqGroup(*group));
  for (const LqOption* option : other.m_options)
    m_options.push_back(new LqOption(*option));
}

LqCfgFile::LqGroup::~LqGroup() { Reset(); }

void LqCfgFile::LqGroup::Reset() {
  for (LqGroup* group : m_groups)
    delete group;
  m_groups.clear();
  for (LqOption* option : m_options)
    delete option;
  m_options.clear();
}

LqCfgFile::LqGroup* LqCfgFile::LqGroup::AddGroup(const LqWString& name) {
  m_groups.push_back(new LqGroup(name));
  return m_groups.back();
}

void LqCfgFile::LqGroup::RemoveGroup(LqGroup* group) {
  m_groups.remove(group);
  // Kept: the pointer is deleted even when it was no child; callers hand over groups this way.
  delete group;
}

void LqCfgFile::LqGroup::RemoveOption(const LqWString& name) {
  for (auto option = m_options.begin(); option != m_options.end(); ++option) {
    if ((*option)->Name() == name) {
      delete *option;
      m_options.erase(option);
      return;
    }
  }
}

LqCfgFile::LqGroup::LqOption* LqCfgFile::LqGroup::Option(const LqWString& name) const {
  for (LqOption* option : m_options)
    if (option->Name() == name) return option;
  return nullptr;
}

const LqWString& LqCfgFile::LqGroup::OptionValue(const LqWString& name,
                                                 const LqWString& defaultValue) const {
  const LqOption* option = Option(name);
  return option ? option->Value() : defaultValue;
}

LqCfgFile::LqGroup* LqCfgFile::LqGroup::Group(const LqWString& path) const {
  PathStep step;
  if (!SplitPath(path, step)) return nullptr;
  const LqWString none;
  for (LqGroup* child : m_groups) {
    if (!(child->Name() == step.name)) continue;
    if (!step.optionName.IsEmpty() &&
        !(child->OptionValue(step.optionName, none) == step.optionValue))
      continue;
    return step.rest.IsEmpty() ? child : child->Group(step.rest);
  }
  return nullptr;
}

LqCfgFile::LqGroup* LqCfgFile::LqGroup::Group(const char16_t* format, ...) const {
  va_list args;
  va_start(args, format);
  const LqWString path = lq::detail::FormatGroupPath(format, args);
  va_end(args);
  return Group(path);
}

bool LqCfgFile::LqGroup::Load(CCfgTokenizer& tokenizer) { return Load(tokenizer, 1); }

bool LqCfgFile::LqGroup::Load(CCfgTokenizer& tokenizer, int depth) {
  if (depth > kMaxDepth) return false;
  while (tokenizer.Next()) {
    switch (tokenizer.TokenType()) {
      case CCfgTokenizer::GroupOpen: {
        LqGroup* child = AddGroup(tokenizer.GroupName());
        // A group cut off or holding an error is dropped; reading goes on here.
        if (!child->Load(tokenizer, depth + 1)) RemoveGroup(child);
        break;
      }
      case CCfgTokenizer::GroupClose: return true;
      case CCfgTokenizer::Option:
        m_options.push_back(new LqOption(tokenizer.OptionName(), tokenizer.OptionValue()));
        break;
      case CCfgTokenizer::Error: return false;
      default: break;
    }
  }
  return false;
}
