#pragma once

#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlDocument.h"

namespace QnXmlLib16 {

// The document of one reading into an object. The text of the caller is read where it lies, and
// nothing in the tree is a part of it: a copy that had to be made goes as soon as the tree stands,
// and is not there at the peak of memory, when the objects are complete.
class CInput : public CXmlDocument
{
public:
    using CXmlDocument::CXmlDocument;
    using CXmlDocument::LoadJsonInPlace;
    using CXmlDocument::LoadXmlInPlace;
    using CXmlDocument::LoadXmlStreamInPlace;

    CXmlElement* TakeDocumentElement()
    {
        SetBuffer(nullptr, 0);
        return GetDocumentElement();
    }
};

} // namespace QnXmlLib16
