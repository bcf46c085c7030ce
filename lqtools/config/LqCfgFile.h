// LqCfgFile: the group/option configuration files of the platform, read into a tree of groups
// that hold string options. A file starts with the bytes "ASCII\r\n"; then
//   name { ... }          a group, nested freely
//   name = "value"        an option; in the value '/' and '\' escape '"', '/', '\', n and r, any
//                         other escaped byte vanishes with its leader, control bytes are dropped
// Names gather the letters, digits and '_' since the last delimiter ('=', '{', '}'); every other
// byte is dropped without ending the name. The reader is loose on purpose: a group cut off by
// the end of the file or holding a bad value is dropped and reading goes on in its parent.
//
// Groups are found by paths such as "meter:id='7'/port": the first child `meter` whose option
// `id` is "7", then its child `port`. Save and SaveAs write nothing: the format is read only.
//
// A file object and its tree belong to one thread at a time. Groups nest at most
// LqCfgFile::kMaxDepth levels deep when read from a file; deeper groups are dropped.
#pragma once

#include <cstdio>
#include <list>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqCfgFile {
 public:
  // How deep groups may nest in a file that is read; a group below that is dropped like a group
  // with a bad value, so that no file can exhaust the stack.
  static constexpr int kMaxDepth = 1000;

  // The byte-at-a-time reader of a file. Next() moves to the next token and returns false only at
  // the end of the file.
  class LQTOOLS_API CCfgTokenizer {
   public:
    enum TokenType { None = 0, GroupOpen = 1, GroupClose = 2, Option = 3, Error = 4 };

    CCfgTokenizer() = default;
    ~CCfgTokenizer();
    CCfgTokenizer(const CCfgTokenizer&) = delete;
    CCfgTokenizer& operator=(const CCfgTokenizer&) = delete;

    // Opens the file and checks its header; false (and closed) on any difference.
    bool Open(const LqWString& fileName);
    bool Next();

    int TokenType() const { return m_tokenType; }
    const LqWString& GroupName() const { return m_groupName; }
    const LqWString& OptionName() const { return m_optionName; }
    const LqWString& OptionValue() const { return m_optionValue; }

   private:
    bool ReadValue();

    std::FILE* m_stream = nullptr;
    int32_t m_tokenType = None;
    LqWString m_groupName;
    LqWString m_optionName;
    LqWString m_optionValue;
  };

  class LQTOOLS_API LqGroup {
   public:
    class LQTOOLS_API LqOption {
     public:
      LqOption(const LqWString& name, const LqWString& value) : m_name(name), m_value(value) {}
      const LqWString& Name() const { return m_name; }
      const LqWString& Value() const { return m_value; }

     private:
      LqWString m_name;
      LqWString m_value;
    };

    using GroupList = std::list<LqGroup*>;
    using OptionList = std::list<LqOption*>;

    LqGroup() = default;
    explicit LqGroup(const LqWString& name) : m_name(name) {}
    // Deep: the name, then the child groups in order, then the options in order.
    LqGroup(const LqGroup& other);
    LqGroup& operator=(const LqGroup& other);
    virtual ~LqGroup();
    // Deletes every child group, then every option; the name stays.
    virtual void Reset();

    const LqWString& Name() const { return m_name; }
    // The number of child groups (options not counted).
    int Size() const { return static_cast<int>(m_groups.size()); }

    // A new child at the end; names may repeat.
    LqGroup* AddGroup(const LqWString& name);
    // Drops every entry equal to `group` and deletes `group` (when not null) even when it was no
    // child of this group: pass only a child, or a group the caller gives up.
    void RemoveGroup(LqGroup* group);
    // The first option of that name; no such option changes nothing.
    void RemoveOption(const LqWString& name);
    // The first such option's value, else `defaultValue` itself: the result lives only as long
    // as the argument.
    const LqWString& OptionValue(const LqWString& name, const LqWString& defaultValue) const;

    // A path "name[:option='value'][/rest]"; null when nothing matches or the path is malformed.
    // A path ending in ':' throws StdRuntimeException("Index out of bounds!").
    LqGroup* Group(const LqWString& path) const;
    // The path formatted into 256 units first.
    LqGroup* Group(const char16_t* format, ...) const;

    // Reads this group's body up to its '}'; false when it is cut off or holds an error.
    bool Load(CCfgTokenizer& tokenizer);

    GroupList::iterator GroupsBegin() { return m_groups.begin(); }
    GroupList::iterator GroupsEnd() { return m_groups.end(); }
    GroupList::const_iterator GroupsBegin() const { return m_groups.begin(); }
    GroupList::const_iterator GroupsEnd() const { return m_groups.end(); }
    OptionList::iterator OptionsBegin() { return m_options.begin(); }
    OptionList::iterator OptionsEnd() { return m_options.end(); }
    OptionList::const_iterator OptionsBegin() const { return m_options.begin(); }
    OptionList::const_iterator OptionsEnd() const { return m_options.end(); }

   private:
    LqOption* Option(const LqWString& name) const;
    bool Load(CCfgTokenizer& tokenizer, int depth);
    void CopyChildren(const LqGroup& other);

    LqWString m_name;
    OptionList m_options;
    GroupList m_groups;
  };

  LqCfgFile() = default;
  // The other's file name and a deep copy of its tree; not dirty.
  LqCfgFile(const LqCfgFile& other);
  // File name, tree and the dirty flag.
  LqCfgFile& operator=(const LqCfgFile& other);
  virtual ~LqCfgFile();

  // Empties the tree first; false when the file cannot be opened, its header differs, or an
  // error token stands at top level (what was read so far stays).
  bool Load(const LqWString& fileName);
  void Reset(const LqWString& fileName);
  // Write nothing and report success.
  bool Save() const { return true; }
  bool SaveAs(const LqWString& fileName);

  const LqWString& FileName() const { return m_fileName; }
  void SetFileName(const LqWString& fileName) { m_fileName = fileName; }
  bool Dirty() const { return m_dirty; }
  void SetDirty(bool dirty) { m_dirty = dirty; }

  const LqGroup* Root() const { return &m_root; }
  LqGroup* AddGroup(const LqWString& name) { return m_root.AddGroup(name); }
  LqGroup* Group(const LqWString& path) const { return m_root.Group(path); }
  LqGroup* Group(const char16_t* format, ...) const;

 private:
  LqWString m_fileName;
  LqGroup m_root;
  bool m_dirty = false;
};
