#include "lqtools/xml/XmlDocumentCallback.h"

XmlDocumentCallback::XmlDocumentCallback() = default;
XmlDocumentCallback::XmlDocumentCallback(const XmlDocumentCallback&) = default;
XmlDocumentCallback::XmlDocumentCallback(XmlDocumentCallback&&) noexcept = default;
XmlDocumentCallback& XmlDocumentCallback::operator=(const XmlDocumentCallback&) = default;
XmlDocumentCallback& XmlDocumentCallback::operator=(XmlDocumentCallback&&) noexcept = default;
