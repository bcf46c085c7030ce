// XmlDocument: one XML text held as a small tree of XmlDocument::XmlNode, addressed by slash
// paths and read through typed getters with defaults.
//
// A node has a tag, one text value, a sorted map of attributes and an ordered list of children,
// nothing else: text between children is joined into the one value and written behind the
// children. Tags of one document are interned in its tag table, so a node must not outlive a
// Reset of its document.
//
// Ownership: a document owns its root, a node owns its children and its value. What Root, Node,
// NewChild and the searches return is borrowed. The copy constructor of XmlNode is shallow (the
// copy shares value and children, and only one of the two may ever be destroyed); operator= and
// SetValue(const XmlNode*) copy deeply. A free-standing node (no document) owns its own tag.
//
// Paths: "a/b", "a?id?/b" (the first a that has a child id), "a?id=7?/b" (whose id reads "7").
// The first matching child ends each step; there is no backtracking.
//
// Failures are results: null, false, the caller's default or the empty text. Exceptions mark
// misuse only: StdRuntimeException("Unexpected call!") from Tag() of a tagless node, and
// std::bad_alloc. A document and its nodes belong to one thread at a time.
#pragma once

#include <cstdint>
#include <cstdio>
#include <list>
#include <map>
#include <stack>
#include <string>
#include <vector>

#include "lqtools/LqToolsExport.h"
#include "lqtools/json/JsonDocument.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/xml/XmlDocumentCallback.h"

class uuid;

class LQTOOLS_API XmlDocument {
 public:
  class LQTOOLS_API XmlNode {
   public:
    using ChildList = std::list<XmlNode*>;
    using AttributeMap = std::map<LqWString, LqWString>;

    // `length` -1 takes the whole text. In a document the tag is interned there; without one the
    // node holds a copy of `length` units. A null tag leaves the node tagless.
    XmlNode(XmlDocument* document, const char16_t* tag, int length);
    // Shallow: shares tag, value object and children with `other`. See the file comment.
    XmlNode(const XmlNode& other);
    // Deep copy of tag, value, attributes and children; the tag is interned in this node's
    // document. No self-assignment guard: a = a empties a.
    XmlNode& operator=(const XmlNode& other);
    ~XmlNode();

    // Frees value, attributes and children; the tag stays.
    void Reset();

    const XmlDocument* Document() const { return m_document; }
    // Throws StdRuntimeException("Unexpected call!") for a tagless node.
    const LqWString& Tag() const;

    // Null when `before` is given and is no child of this node.
    XmlNode* NewChild(const char16_t* name, XmlNode* before = nullptr);
    XmlNode* NewChild(const char* name);
    // Takes ownership, in front of `before` or at the end. When `before` is no child, nothing
    // happens and `child` stays with the caller. A null child is refused the same way.
    void AddChild(XmlNode* child, XmlNode* before = nullptr);

    int Size() const { return static_cast<int>(m_childs.size()); }
    bool HasChilds() const { return !m_childs.empty(); }
    bool HasAttributes() const { return !m_attributes.empty(); }
    int attributesSize() const { return static_cast<int>(m_attributes.size()); }
    ChildList GetChildsList() const { return m_childs; }

    ChildList::iterator ChildsBegin() { return m_childs.begin(); }
    ChildList::iterator ChildsEnd() { return m_childs.end(); }
    ChildList::const_iterator ChildsBegin() const { return m_childs.begin(); }
    ChildList::const_iterator ChildsEnd() const { return m_childs.end(); }
    ChildList::reverse_iterator ReverseChildsBegin() { return m_childs.rbegin(); }
    ChildList::reverse_iterator ReverseChildsEnd() { return m_childs.rend(); }
    ChildList::const_reverse_iterator ReverseChildsBegin() const { return m_childs.rbegin(); }
    ChildList::const_reverse_iterator ReverseChildsEnd() const { return m_childs.rend(); }
    AttributeMap::iterator attributesBegin() { return m_attributes.begin(); }
    AttributeMap::iterator attributesEnd() { return m_attributes.end(); }
    AttributeMap::const_iterator attributesBegin() const { return m_attributes.begin(); }
    AttributeMap::const_iterator attributesEnd() const { return m_attributes.end(); }

    // Does nothing; kept in the interface for its callers.
    void printk(int) const {}

    // ---------------------------------------------------------------------------------------
    // Addressing. The empty path (and a null one) is this node.

    XmlNode* Node(const char16_t* path);
    const XmlNode* Node(const char16_t* path) const;
    // `format` is formatted into 1024 units first. A text that does not fit gives null.
    XmlNode* NodeV(const char16_t* format, ...);
    const XmlNode* NodeV(const char16_t* format, ...) const;
    // As NodeV; a text that does not fit gives the empty text.
    LqWString ValueV(const char16_t* format, ...) const;
    // `path` goes through the formatter without arguments: "%%" stands for '%', and a path with
    // any other conversion (or longer than 1024 units) is false.
    bool HasNode(const char16_t* path) const;

    // ---------------------------------------------------------------------------------------
    // Values and attributes

    // The value, or the shared empty text when none was ever set.
    const LqWString& Value() const;
    LqWString Value(const char16_t* path, const char16_t* defaultValue) const;
    // True only for exactly "T".
    bool bValue() const;
    bool bValue(const char16_t* path, const bool& defaultValue) const;
    // False without the node, else whether the value equals `text`.
    bool bValue(const char16_t* path, const char16_t* text) const;
    int iValue() const;
    int iValue(const char16_t* path, const int& defaultValue) const;
    // Base 16, clamped to the signed 32-bit range.
    int32_t hValue() const;
    // Base 16 into the unsigned 32-bit range.
    uint32_t hValue(const char16_t* path, const int32_t& defaultValue) const;
    double dValue() const;
    double dValue(const char16_t* path, const double& defaultValue) const;
    // UTF-8
    LqString sValue() const;
    LqString sValue(const char16_t* path, const char* defaultValue) const;

    // An empty name is ignored; a null value stores the empty text.
    void setAttribute(const char16_t* name, const char16_t* value);
    LqWString getAttribute(const char16_t* name, const char16_t* defaultValue) const;
    bool HasAttribute(const char16_t* name) const;

    // This node's own value. Numbers are stored as "%d", "%u", "%ld", "%lu" and "%f" in the "C"
    // locale, booleans as "T" and "F"; narrow texts are UTF-8.
    void SetValue(const LqWString& value);
    void SetValue(const char16_t* value);
    void SetValue(const char* value);
    void SetValue(int value);
    void SetValue(uint32_t value);
    void SetValue(long value);
    void SetValue(unsigned long value);
    void SetValue(double value);
    void SetValue(bool value);
    // The 36-character upper-case text of the identifier.
    void SetValue(const uuid& value);
    // Replaces tag, value, attributes and children by deep copies of `source`; null does nothing.
    void SetValue(const XmlNode* source);

    // The node at `path`, or else one new child whose tag is the whole of `path`.
    void SetValue(const char16_t* path, const LqWString& value);
    void SetValue(const char16_t* path, const char16_t* value);
    void SetValue(const char16_t* path, const char* value);
    void SetValue(const char16_t* path, const LqString& value);
    void SetValue(const char16_t* path, int value);
    void SetValue(const char16_t* path, uint32_t value);
    void SetValue(const char16_t* path, long value);
    void SetValue(const char16_t* path, unsigned long value);
    void SetValue(const char16_t* path, double value);
    void SetValue(const char16_t* path, bool value);
    void SetValue(const char16_t* path, const uuid& value);
    // A null source does nothing and makes no child.
    void SetValue(const char16_t* path, const XmlNode* source);

    // The same with a UTF-8 path.
    void SetValue(const char* path, const LqWString& value);
    void SetValue(const char* path, const char16_t* value);
    void SetValue(const char* path, const char* value);
    void SetValue(const char* path, const LqString& value);
    void SetValue(const char* path, int value);
    void SetValue(const char* path, uint32_t value);
    void SetValue(const char* path, long value);
    void SetValue(const char* path, unsigned long value);
    void SetValue(const char* path, double value);
    void SetValue(const char* path, bool value);
    void SetValue(const char* path, const uuid& value);
    void SetValue(const char* path, const XmlNode* source);

    // ---------------------------------------------------------------------------------------
    // Writing: this element and everything below it, without a header. The string form writes
    // an empty element as <x></x>, the file form as <x/>.

    void CreateXmlCode(LqString& out) const;
    void SaveXmlCode(FILE* stream) const;

    // ---------------------------------------------------------------------------------------
    // Editing and search

    // Removes the one node that `path` addresses; never this node itself.
    bool Erase(const char16_t* path);
    // As Erase after formatting into 1024 units; a text that does not fit is false.
    bool EraseV(const char16_t* format, ...);
    // Removes every direct child with this tag; always true.
    bool EraseTag(const char16_t* tag);
    // Removes the first direct child with this tag, whatever `index` says; false when none.
    bool EraseTag(const char16_t* tag, int index);
    // Deletes `child` where it is found in this subtree.
    void RemoveChild(XmlNode* child);
    // True also for a node without any attributes.
    bool eraseAttribute(const char16_t* name);

    // Free-standing nodes are not renamed.
    void Rename(const char16_t* name);
    bool RenameAttribute(const char16_t* oldName, const char16_t* newName);

    // Appends each direct child to the list under its tag; `groups` is not emptied first.
    void ChildListGroupedByName(std::map<LqWString, std::list<XmlNode*>>& groups);
    // Sets the attribute "order" to 0, 1, 2... on the children of every level below this node.
    void fixOrderNodes();

    // Depth first, this node first. The text "-1" marks an absent attribute, so an attribute
    // whose value is "-1" is never reported. True when this call appended anything.
    bool searchNodeByAttributeName(std::vector<const XmlNode*>& results, const char16_t* name);
    bool searchNodeByAttributeNameAndValue(std::vector<const XmlNode*>& results,
                                           const char16_t* name, const char16_t* value);

    // Appends this element to `parent` as JSON: a member under the tag (unnamed in an array),
    // repeated child tags as arrays, childless elements as strings, attributes as string
    // members named "-" and the attribute's name. Children come grouped in tag order, the
    // attributes behind them; the value of an element with children is dropped.
    void toJson(JsonDocument::JsonNode* parent);

    // Equal text forms (CreateXmlCode): an empty value equals no value.
    bool operator==(const XmlNode& other);
    bool operator!=(const XmlNode& other);

    // Shared by every node without a value.
    static LqWString m_emptyValue;

   private:
    friend class XmlDocument;

    // A node without a tag; it gets one from operator=.
    explicit XmlNode(XmlDocument* document);

    const XmlNode* NodeFromString(const char16_t* path) const;
    // The walk of lookups and erasing, by first match per step without backtracking: the node the
    // last step names, with `parent` set to the node it was found under; null when a step finds
    // nothing or a '?' is unclosed; this node itself, with `parent` null, for a path of no steps.
    const XmlNode* Walk(const char16_t* path, const XmlNode** parent) const;
    LqWString& ValueObject();
    bool HoldsBelow(const XmlNode* node) const;
    void getAttributesJson(JsonDocument::JsonNode* target) const;
    void CopyFrom(const XmlNode& other);

    XmlDocument* m_document;
    const LqWString* m_tag;
    LqWString* m_value;
    ChildList m_childs;
    AttributeMap m_attributes;
  };

  XmlDocument();
  // A new document holding a deep copy of `node` as its root, bound to the file of the node's
  // document.
  explicit XmlDocument(const XmlNode& node);
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;
  virtual ~XmlDocument();

  // Empties the tag table and deletes the tree; the file names and the callback stay.
  virtual void Reset();
  void Create(const char16_t* rootTag);
  bool IsOK() const { return m_root != nullptr; }
  XmlNode* Root() { return m_root; }
  const XmlNode* Root() const { return m_root; }
  // The path begins below the root. Null for an empty document.
  XmlNode* Node(const char16_t* path);
  const XmlNode* Node(const char16_t* path) const;
  // `defaultValue` counts only for an empty document; with a root a missing node gives "".
  LqWString Value(const char16_t* path, const char16_t* defaultValue) const;
  // Interns a tag by its whole terminated text; `length` is only recorded on first entry.
  const LqWString* Tag(const char16_t* text, int length);

  // ---------------------------------------------------------------------------------------
  // Reading. A failure leaves an empty document and false.

  // A zero-terminated UTF-8 text.
  bool Parse(const char* text);
  virtual bool Load(const char16_t* fileName);
  // Falls back to `bckFileName` and then rewrites `fileName` from it.
  bool Load(const char16_t* fileName, const char16_t* bckFileName);

  // ---------------------------------------------------------------------------------------
  // Writing. The header is the 55 bytes <?xml version="1.0" encoding="UTF-8" standalone="yes"?>.

  void CreateXmlCode(LqString& out, bool header) const;
  void SaveXmlCode(FILE* stream, bool header) const;
  // Truncates and rewrites the file in place, making its folders when needed. False when there
  // is no file name or the file cannot be opened.
  virtual bool Save() const;
  bool SaveAs(const char16_t* fileName);
  // Writes `bckFileName` first, then `fileName`, and stays bound to `fileName`.
  bool SaveAs(const char16_t* fileName, const char16_t* bckFileName);

  const char16_t* FileName() const { return m_fileName; }
  void SetFileName(const char16_t* name);
  const char16_t* BckFileName() const { return m_bckFileName; }
  // Kept: this stores `name` as the file name and clears the backup name; callers and the
  // two-file Load depend on it.
  void SetBckFileName(const char16_t* name);
  bool Dirty() const { return m_dirty; }
  void SetDirty(bool dirty) { m_dirty = dirty; }
  void SetXmlDocumentCallback(XmlDocumentCallback* callback) { m_callback = callback; }

  bool Erase(const char16_t* path);

  // Streams `fileName` through a buffer of `bufferSize` bytes and returns the first element at
  // `path` ("/a/b": the tag names below the root, compared literally) with its subtree, or null
  // with a line in a log. The returned node is free-standing, its tag is the whole `path`, and
  // the caller deletes it. Reading stops at the element's end tag. The reader knows a narrow
  // form of XML: a header, start and end tags throughout, attributes in double quotes, text taken
  // as bytes without decoding. A bufferSize below 2 counts as 2.
  static XmlNode* LoadNodeByPath(const std::u16string& fileName, const std::u16string& path,
                                 unsigned long long bufferSize);

 private:
  static std::string GetNextTagFromString(const std::string& text);
  static bool IsAllWhitespace(const std::string& text);
  static bool IsGoalNodeInTheStack(const std::u16string& path, std::stack<std::string>& tags);

  struct ParseState;

  bool Load();
  XmlNode* ParseNode(const char** cursor);
  XmlNode* ParseNode(const char** cursor, ParseState& state, int depth);
  void ParseNodeAttributes(XmlNode* node, const LqWString& text);
  // `pair` is a buffer for one terminated name and value, kept by the caller between calls.
  void ParseNodeAttributes(XmlNode* node, const char16_t* begin, const char16_t* end,
                           std::u16string& pair);
  bool SaveTo(const char16_t* fileName) const;

  std::map<LqWString, int> m_tags;
  XmlNode* m_root;
  char16_t* m_fileName;
  char16_t* m_bckFileName;
  mutable bool m_dirty;
  XmlDocumentCallback* m_callback;
};

// Escapes " & ' < > as entities; nothing else is touched. `out` gets GrowLargeBlock unless it
// has a policy already.
LQTOOLS_API void Text2Xml(LqString& out, const LqString& text);
LQTOOLS_API void Text2Xml(LqWString& out, const LqWString& text);
// Decodes the five entities, with a lax test on the first unit of &amp; and &apos;. Numeric
// references stay as text.
LQTOOLS_API void Xml2Text(LqString& out, const LqString& text);
LQTOOLS_API void Xml2Text(LqWString& out, const LqWString& text);
