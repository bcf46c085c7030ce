// JsonDocument: one JSON text held as a tree of JsonDocument::JsonNode, read from a UTF-8 file or a
// UTF-8 string, addressed by slash paths ("device/inputs/?id=7?"), edited in place and written back
// compactly to a wide string or, as UTF-8, to a file.
//
//   JsonDocument doc;
//   if (doc.Load(u"/etc/plant/settings.json")) {
//     int port = doc.Root()->ValueInt(u"server/port");   // -2147483648 when absent
//     doc.Root()->SetValue(u"server/name", u"north");
//     doc.Save();
//   }
//
// The model is this library's own: integers and floats are two types (2 and 3), true and false are
// one (0, the value 0 or 1), and the three value fields stand side by side, so a node keeps what
// its type does not use. The parser is lenient (a leading comma in a container, `null` matched as
// a prefix, text after the first value ignored) and the writer escapes only quote, backslash and
// the five named control characters. Nesting deeper than kMaxParseDepth containers fails a parse.
//
// Ownership: a document owns its root, a node its children. AddChild takes the pointer it is
// given; what Node, NewChild and the iterators return is borrowed. Failures are results: false,
// null, the getters' sentinels. StdRuntimeException("Unexpected situation!") marks misuse only: a
// null path, child or name, and a failed allocation while loading.
//
// Threads: a document and its nodes belong to one thread at a time; nothing is locked.
#pragma once

#include <cstdint>
#include <cstdio>
#include <list>
#include <string>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class uuid;

class LQTOOLS_API JsonDocument {
 public:
  // The type codes of nodes; the interface keeps `int` for them.
  enum JsonType {
    JsonBoolean = 0,
    JsonNull = 1,
    JsonInteger = 2,
    JsonFloat = 3,
    JsonString = 4,
    JsonArray = 5,
    JsonObject = 6
  };

  // Containers (arrays and objects) a parse accepts open at once; one more fails the parse, so
  // that no text can exhaust the stack of the recursive parser and writers.
  static constexpr int kMaxParseDepth = 1000;

  // ------------------------------------------------------------------------------------------
  // JsonNode: one value of the tree. Its type code selects which field holds the value:
  //   0 boolean (integer field 0 or 1), 1 null, 2 integer (integer field), 3 float (double
  //   field), 4 string (value string), 5 array, 6 object (children).
  // An object member and an array element are both children; only a member has a name.
  class LQTOOLS_API JsonNode {
   public:
    using ChildList = std::list<JsonNode*>;

    // Type 3 keeps `value`, type 2 its 32-bit truncation (out of range: -2147483648), type 0 the
    // 1 when it is not 0.0, type 4 `string` when not null. A type above 6, also a negative one, is
    // stored as 6.
    explicit JsonNode(int type, double value = 0.0, const char16_t* string = nullptr);
    // Deep copies: type, values, name and a clone of every child, in order.
    JsonNode(const JsonNode& other);
    JsonNode& operator=(const JsonNode& other);
    ~JsonNode();

    // --------------------------------------------------------------------------------------
    // Fields

    int Type() const { return m_type; }
    // Stores any value unchecked; no other field changes.
    void SetType(int type) { m_type = type; }
    int Size() const { return static_cast<int>(m_childs.size()); }
    // The name.
    const LqWString& String() const { return m_name; }
    // Set the name; null throws.
    void SetString(const char16_t* name);
    void SetString(const char* utf8Name);
    // The value fields, whatever the type.
    const LqWString& ValueString() const { return m_stringValue; }
    int ValueInt() const { return m_intValue; }
    double ValueDouble() const { return m_doubleValue; }

    // --------------------------------------------------------------------------------------
    // Lookups by path. The integer of the node found, or -2147483648; its double, or the
    // smallest positive normal double 2.2250738585072014e-308; a copy of its value string, or
    // `defaultValue`.
    int ValueInt(const char16_t* path) const;
    double ValueDouble(const char16_t* path) const;
    LqWString ValueString(const char16_t* path, const char16_t* defaultValue) const;

    // The node at `path`, or null. Segments are separated by '/', leading ones are skipped and an
    // empty path is this node. A segment names the first child of that name; `tag?name=value?`
    // then returns the first child of that one whose name and value text match, dropping the rest
    // of the path, and goes on as if there were no filter when none matches. A null path throws.
    JsonNode* Node(const char16_t* path);
    // Formats the path into 1024 units first (%s takes a const char16_t*), then Node.
    JsonNode* NodeV(const char16_t* format, ...);

    // --------------------------------------------------------------------------------------
    // Children

    // Only 5 and 6 create a child, appended and returned; another type returns null.
    JsonNode* NewChild(int type);
    JsonNode* NewChild(const char16_t* name, int type);
    // Always creates an object: the type is ignored.
    JsonNode* NewChild(const char* utf8Name, int type);
    // Appends and takes ownership; null throws.
    void AddChild(JsonNode* child);
    // Removes every entry equal to `child` and deletes it once; a pointer that is no child is
    // left alone.
    void RemoveChild(JsonNode* child);
    // Deletes the children; type, values and name stay.
    void Reset();
    // A copy of the list; the nodes are shared, not copied.
    ChildList GetChilds() const { return m_childs; }
    ChildList::iterator ChildsBegin() { return m_childs.begin(); }
    ChildList::iterator ChildsEnd() { return m_childs.end(); }
    ChildList::const_iterator ChildsBegin() const { return m_childs.begin(); }
    ChildList::const_iterator ChildsEnd() const { return m_childs.end(); }
    ChildList::reverse_iterator ReverseChildsBegin() { return m_childs.rbegin(); }
    ChildList::reverse_iterator ReverseChildsEnd() { return m_childs.rend(); }
    ChildList::const_reverse_iterator ReverseChildsBegin() const { return m_childs.rbegin(); }
    ChildList::const_reverse_iterator ReverseChildsEnd() const { return m_childs.rend(); }

    // --------------------------------------------------------------------------------------
    // Values. Without a path a setter acts on this node by its type: an array appends a new
    // element, the matching type stores, any other type ignores the call.
    void SetValue(int value);
    void SetValue(double value);
    void SetValue(bool value);
    // The 36-character upper-case text of the identifier, as a string node.
    void SetValue(const uuid& value);
    void SetValue(const char16_t* value);  // null stores the empty text
    void SetValue(const char* utf8Value);
    void SetNullValue();

    // With a path a setter acts only on an object: a missing node becomes a new member named by
    // the whole path text, unsplit; a found node of the matching type stores; another type
    // ignores the call.
    void SetValue(const char16_t* path, const char16_t* value);
    // Kept: an existing integer member receives 1 or 0, while a new member keeps the whole
    // value; callers store flags through this form.
    void SetValue(const char16_t* path, int value);
    void SetValue(const char16_t* path, double value);
    void SetValue(const char16_t* path, bool value);
    void SetValue(const char16_t* path, const uuid& value);
    // Kept: beside an existing member that is not null this appends a second member of the same
    // name instead of replacing it.
    void SetNullValue(const char16_t* path);

    // --------------------------------------------------------------------------------------
    // Text. Compact: ": " after a name, "," between children, no line breaks. A name is written
    // whenever it is not empty, floats by "%.17g", and strings escape only the quote, the
    // backslash and \b \f \n \r \t. A type above 6 writes its name and nothing else.

    // Replaces `out` with the text of this node.
    void CreateJsonCode(std::u16string& out) const;
    // Writes the same text as UTF-8, node by node, to an open stream; a null stream is ignored.
    void SaveJsonCode(FILE* stream) const;

    // Does nothing.
    void printk(int) const {}

   private:
    void AppendJsonCode(std::u16string& out) const;
    void AppendJsonCodeForArray(std::u16string& out) const;
    void AppendJsonCodeForObject(std::u16string& out) const;
    void SaveJsonCodeForArray(FILE* stream) const;
    void SaveJsonCodeForObject(FILE* stream) const;

    // The escapers append `in` in quotes to `out`; a null `in` appends "".
    void scapeString(const char* in, LqString& out) const;
    void scapeString(const char16_t* in, LqWString& out) const;
    void scapeString(const char* in, LqWString& out) const;
    void scapeString(const char16_t* in, LqString& out) const;
    void scapeString(const char16_t* in, std::u16string& out) const;

    // The children, moved out of the list, deleted without recursion.
    void DeleteChilds();

    friend class JsonDocument;

    int32_t m_type;
    int32_t m_intValue;
    double m_doubleValue;
    LqWString m_stringValue;
    LqWString m_name;
    ChildList m_childs;
  };

  // ------------------------------------------------------------------------------------------
  // The document

  // Empty: no root, not dirty, an empty file name.
  JsonDocument();
  ~JsonDocument();
  // Kept: the plain copy of the fields. Both documents then share one root and one name and
  // each would free them, so it must never be used on a live document.
  JsonDocument& operator=(const JsonDocument&) = default;
  JsonDocument(const JsonDocument&) = delete;

  // Only 5 and 6: drops the tree and makes a new empty root of that type. Any other value
  // changes nothing.
  void Create(int type);
  // Reset, SetFileName, then reads the whole UTF-8 file. Leading control bytes and every byte
  // from 0x80 up are dropped from its front (a byte order mark among them).
  bool Load(const char16_t* fileName);
  // Reset, then parses the text up to its first zero byte. Only the first complete value is
  // read: "1 2" and "{} x" succeed. False for null and for text that holds no value; the old tree
  // is lost either way.
  bool Parse(const char* text);
  // Deletes the tree and clears the dirty flag; the file name stays.
  void Reset();

  bool IsOK() const { return m_root != nullptr; }
  JsonNode* Root() { return m_root; }
  const JsonNode* Root() const { return m_root; }

  const char16_t* FileName() const { return m_fileName; }
  // Stores a copy; null stores the empty name.
  void SetFileName(const char16_t* fileName);
  // Set only by the caller; Reset and a successful Save clear it.
  bool Dirty() const { return m_dirty; }
  void SetDirty(bool dirty) { m_dirty = dirty; }

  // Writes the tree as UTF-8 to the document's file, replacing it in place, and creates the
  // missing folders of its path. False when the file cannot be opened, or when there is no
  // tree; write errors are not noticed.
  bool Save() const;
  // SetFileName, then Save: the name stays changed when saving fails.
  bool SaveAs(const char16_t* fileName);

  // The lead-byte marks of UTF-8 sequences by length, as the \u decoder indexes them.
  static const unsigned char firstByteMark[7];

 private:
  bool Load();
  // The front of a loaded buffer of `size` bytes plus the added terminator: returns the buffer
  // to parse, a new one when bytes were dropped.
  char* CheckFirstCharacters(char* buffer, int32_t size);

  // Each parses from `text` into `node` and returns the position after what it consumed, or
  // null. `depth` counts the containers open around `node`.
  const char* ParseValue(JsonNode* node, const char* text, int depth = 0);
  const char* ParseObject(JsonNode* node, const char* text, int depth = 0);
  const char* ParseArray(JsonNode* node, const char* text, int depth = 0);
  const char* ParseString(JsonNode* node, const char* text);
  const char* ParseNumber(JsonNode* node, const char* text);
  // Steps over TAB, LF, CR and blank only; null stays null.
  static const char* skip(const char* text);

  // Heap nodes; the named forms set the name, and a null name throws.
  static JsonNode* cJSON_CreateNull();
  static JsonNode* cJSON_CreateNull(const char16_t* name);
  static JsonNode* cJSON_CreateBool(bool value);
  static JsonNode* cJSON_CreateBool(const char16_t* name, bool value);
  static JsonNode* cJSON_CreateInteger(int value);
  static JsonNode* cJSON_CreateInteger(const char16_t* name, int value);
  static JsonNode* cJSON_CreateFloat(double value);
  static JsonNode* cJSON_CreateFloat(const char16_t* name, double value);
  static JsonNode* cJSON_CreateString(const char16_t* value);
  static JsonNode* cJSON_CreateString(const char16_t* name, const char16_t* value);
  static JsonNode* cJSON_CreateArray();
  static JsonNode* cJSON_CreateArray(const char16_t* name);
  static JsonNode* cJSON_CreateObject();
  static JsonNode* cJSON_CreateObject(const char16_t* name);

  JsonNode* m_root;
  char16_t* m_fileName;
  mutable bool m_dirty;
};
