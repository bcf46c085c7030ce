// XmlDocumentCallback: the hook a host hangs on an XmlDocument to hear of every successful save.
// The document holds a plain pointer and never owns or deletes the callback. OnSaved runs inside
// XmlDocument::Save, on the caller's thread, after the main file has been written and closed; it
// must not destroy the document that calls it.
#pragma once

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API XmlDocumentCallback {
 public:
  XmlDocumentCallback();
  XmlDocumentCallback(const XmlDocumentCallback& other);
  XmlDocumentCallback(XmlDocumentCallback&& other) noexcept;
  XmlDocumentCallback& operator=(const XmlDocumentCallback& other);
  XmlDocumentCallback& operator=(XmlDocumentCallback&& other) noexcept;

  virtual void OnSaved() = 0;

 protected:
  // Not virtual: a callback is never deleted through this interface.
  ~XmlDocumentCallback() = default;
};
