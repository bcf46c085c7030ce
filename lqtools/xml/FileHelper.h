// FileHelperInterface: a small replaceable service that reads a whole file into a string, or one
// element of an XML file as XML text. FileHelper is the real thing; programs that want to replace
// file access take the interface and hand in their own implementation.
//
// The interface has no data and no virtual destructor: delete a FileHelper through its own type.
// Every failure gives the empty string, so a missing file and an empty one look alike.
#pragma once

#include <string>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API FileHelperInterface {
 public:
  FileHelperInterface();
  FileHelperInterface(const FileHelperInterface& other);
  FileHelperInterface(FileHelperInterface&& other);
  FileHelperInterface& operator=(const FileHelperInterface& other);
  FileHelperInterface& operator=(FileHelperInterface&& other);

  virtual std::string FileToString(const LqWString& fileName) = 0;
  virtual std::string FileToString(const std::string& fileName) = 0;
  virtual std::string XmlDocumentFileNodeToString(const LqWString& fileName,
                                                  const LqWString& nodeName) = 0;
};

class LQTOOLS_API FileHelper : public FileHelperInterface {
 public:
  FileHelper();
  FileHelper(const FileHelper& other);
  FileHelper& operator=(const FileHelper& other);

  // Narrows the name unit by unit to its low byte and calls the std::string form through the
  // virtual table, so that an override of that form serves this one too.
  std::string FileToString(const LqWString& fileName) override;
  // The bytes of the file as they stand; a file that cannot be opened gives "".
  std::string FileToString(const std::string& fileName) override;
  // The element at `nodeName` (the root's own tag, or a path below the root) of the XML file,
  // as UTF-8 XML without a header in the string writer's form.
  std::string XmlDocumentFileNodeToString(const LqWString& fileName,
                                          const LqWString& nodeName) override;
  virtual ~FileHelper();
};
