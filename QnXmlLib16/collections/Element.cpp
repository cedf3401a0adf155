#include "QnXmlLib16/collections/Element.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

#include <cstddef>
#include <cstring>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace QnXmlLib16 {

struct CElement::Name
{
    std::string m_strLocalName;
    std::string m_strNamespace;
};

struct CElement::Rules
{
    std::string m_strRestriction;
    std::string m_strTargetNamespace;
    // What the collections were given as their namespace; the element's own may have changed.
    std::string m_strCollectionNamespace;
};

struct CElement::AttributeRecord
{
    std::shared_ptr<const Name> m_pName; // never null
    std::string m_strValue;
};

// Walks over whole trees of elements, each with a stack of its own in place of recursion.
struct CElement::Tree
{
    class Builder;

    static CSmartPtr<CElement> Clone(const CElement& source);

    // Writes the element and all below. An item of a derived class is left to its own ToXml_Int,
    // which is given pszTargetNamespace.
    static void Write(const CElement& element, CXmlWriter& writer, const char* pszTargetNamespace,
                      const CSerializationContext& context);

private:
    struct CloneFrame;
    struct DefaultScope;
    struct WriteFrame;

    static CSmartPtr<CElement> CloneWithoutChildren(const CElement& source);
    // pScope is the scope that the writer belongs to, null if to none.
    static WriteFrame Open(const CElement& element, CXmlWriter& writer, DefaultScope* pScope,
                           const char* pszTargetNamespace, const CSerializationContext& context);
    static void Close(WriteFrame& frame);
};

// Turns elements of a document into new trees of CElement. Serves one document that stays as it is
// meanwhile; equal names are shared as far as the document shares them.
//
// New elements have the restriction "##any", so nothing that is put into them needs a test, and no
// listeners, so no event is heard from within.
class CElement::Tree::Builder
{
public:
    // For CopyXmlElement: the collections know no namespace, and an attribute "xmlns" sets the
    // default namespace.
    Builder() = default;

    // For FromXml_Int: the collections of an element know its namespace and the target namespace.
    explicit Builder(const std::string& strTargetNamespace)
        : m_pTargetNamespace(&strTargetNamespace)
    {}

    CSmartPtr<CElement> Build(const CXmlElement& source);

private:
    // The texts of a name where the document keeps them.
    using Key = std::pair<const std::string*, const std::string*>;

    struct KeyHash
    {
        std::size_t operator()(const Key& key) const noexcept
        {
            return reinterpret_cast<std::size_t>(key.first) / 16 +
                   reinterpret_cast<std::size_t>(key.second) * 31;
        }
    };

    struct Known
    {
        std::shared_ptr<const Name> m_pName;
        std::shared_ptr<const Rules> m_pRules; // of elements of that name
    };

    struct Frame
    {
        CElementCol* m_pChildren;
        const CXmlElement* m_pNext;
    };

    CSmartPtr<CElement> BuildWithoutChildren(const CXmlElement& source);
    const Known& Know(const std::string& strLocalName, const std::string& strNamespace);

    const std::string* m_pTargetNamespace = nullptr; // not owned; null for CopyXmlElement
    std::unordered_map<Key, Known, KeyHash> m_mapKnown;
    std::vector<Frame> m_vecStack; // its memory serves one call after the other
};

namespace {

std::shared_ptr<const std::string> Share(std::string strText)
{
    if (strText.empty())
        return nullptr;
    return std::make_shared<const std::string>(std::move(strText));
}

bool IsKeyword(const char* pszNamespace)
{
    for (const char* pszKeyword : {"##any", "##other", "##local", "##targetNamespace"}) {
        if (std::strcmp(pszNamespace, pszKeyword) == 0)
            return true;
    }
    return false;
}

} // namespace

CElement::CElement() : CInstanceMonitor("CElement") {}

CElement::CElement(const char* pszName) : CElement()
{
    Init(pszName, "", "##any", "");
}

CElement::CElement(const char* pszName, const char* pszNamespace) : CElement()
{
    if (pszNamespace && IsKeyword(pszNamespace)) {
        throw CQnInvalidNamespaceException(FormatString("Invalid Namespace [%s].", pszNamespace),
                                           "");
    }
    Init(pszName, pszNamespace, pszNamespace, "");
}

CElement::CElement(const char* pszName, const char* pszNamespace, const char* pszRestriction,
                   const char* pszTargetNamespace)
    : CElement()
{
    Init(pszName, pszNamespace, pszRestriction, pszTargetNamespace);
}

CElement::CElement(CXmlObjectBase* pObject, const char* pszDefaultNamespace) : CElement()
{
    if (!pObject)
        throw CQnInvalidParamException("The object to copy may not be NULL");
    if (pszDefaultNamespace)
        m_pDefaultNamespace = Share(pszDefaultNamespace);
    CSerializationContext context;
    context.SetDefaultNamespaceURI(pszDefaultNamespace);
    const CBinaryData data = pObject->ToXmlStream(false, false, XmlEncoding_UTF8, EOLType_LF,
                                                  context, CompressionType_None);
    CXmlDocument document(context);
    document.LoadXmlStream(data.GetData(), data.GetLength());
    CopyXmlElement(document.GetDocumentElement());
}

CElement::~CElement() = default;

void CElement::Init(const char* pszName, const char* pszNamespace, const char* pszRestriction,
                    const char* pszTargetNamespace)
{
    if (!pszName)
        throw CQnInvalidNamespaceException("Element Name must have a value", "");
    if (!pszRestriction)
        throw CQnInvalidNamespaceException("Namespace Restriction must have a value", "");
    if (!pszTargetNamespace)
        throw CQnInvalidNamespaceException("Target Namespace must have a value", "");

    Rules rules{pszRestriction, pszTargetNamespace, pszNamespace ? pszNamespace : ""};
    CXmlObjectHelper::TestNamespace(rules.m_strCollectionNamespace, rules.m_strRestriction,
                                    rules.m_strTargetNamespace);
    std::shared_ptr<const Rules> pRules;
    if (rules.m_strRestriction != "##any" || !rules.m_strTargetNamespace.empty() ||
        !rules.m_strCollectionNamespace.empty()) {
        pRules = std::make_shared<const Rules>(rules);
    }
    SetFullName(pszName, std::move(rules.m_strCollectionNamespace));
    m_pRules.swap(pRules);
    m_vecRecords.clear();
    m_pAttributes.Reset();
    m_pElements.Reset();
}

CXmlObjectBase* CElement::GetBase()
{
    return this;
}

// Deliberate: the target namespace that the restriction refers to is not told by either of these.
// Pinned by ElementConstruction.NamespacesAreThoseOfTheElement.
std::string CElement::GetTargetNamespace() const
{
    return GetNamespaceText();
}

std::string CElement::GetNamespace() const
{
    return GetNamespaceText();
}

CSmartPtr<CElement> CElement::Clone() const
{
    return Tree::Clone(*this);
}

void CElement::CopyXmlElement(CXmlElement* pSource)
{
    if (!pSource)
        throw CQnInvalidParamException("The element to copy may not be NULL");
    Tree::Builder builder;
    SetFullName(pSource->GetLocalName(), pSource->GetNamespaceURI());
    m_strText = pSource->GetText();
    m_vecRecords.clear();
    if (m_pAttributes)
        m_pAttributes->Clear();
    if (m_pElements)
        m_pElements->Clear();
    for (const CXmlAttribute* pAttribute : pSource->GetAttributes()) {
        Attributes().Add(pAttribute->GetLocalName().c_str(), pAttribute->GetValue().c_str(),
                         pAttribute->GetNamespaceURI().c_str());
        if (pAttribute->GetLocalName() == "xmlns")
            m_pDefaultNamespace = Share(pAttribute->GetValue());
    }
    for (const CXmlElement* pChild = pSource->GetFirstElement(); pChild;
         pChild = pChild->GetNextSiblingElement()) {
        Elements().Add(builder.Build(*pChild).GetPtr());
    }
}

void CElement::SetNamespaceRestrictions(const char* pszRestriction, const char* pszTargetNamespace)
{
    const std::string strRestriction(pszRestriction ? pszRestriction : "");
    const std::string strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "");
    std::vector<const CNode*> vecNext; // on each level, the child to be tested next
    const CElement* pElement = this;
    while (pElement) {
        try {
            CXmlObjectHelper::TestNamespace(pElement->GetNamespaceText(), strRestriction,
                                            strTargetNamespace);
        }
        catch (const CQnException&) {
            throw new CQnInvalidNamespaceException(
                FormatString("The namespace %s in the class %s is invalid against restriction %s",
                             pElement->GetName().c_str(), pElement->GetNamespaceText().c_str(),
                             strRestriction.c_str()),
                "");
        }
        for (const AttributeRecord& record : pElement->m_vecRecords)
            CXmlObjectHelper::TestNamespace(record.m_pName->m_strNamespace, strRestriction,
                                            strTargetNamespace);
        if (pElement->m_pAttributes) {
            for (CNode* pNode = pElement->m_pAttributes->begin(); pNode; pNode = pNode->GetNext()) {
                if (pNode->GetItem()) {
                    CXmlObjectHelper::TestNamespace(pNode->GetItem()->GetNamespace(),
                                                    strRestriction, strTargetNamespace);
                }
            }
        }
        if (pElement->m_pElements)
            vecNext.push_back(pElement->m_pElements->begin());
        pElement = nullptr;
        while (!pElement && !vecNext.empty()) {
            if (const CNode* pNode = vecNext.back()) {
                vecNext.back() = pNode->GetNext();
                pElement = dynamic_cast<const CElement*>(pNode->GetItem());
            }
            else {
                vecNext.pop_back();
            }
        }
    }
}

void CElement::FromXml(const char* pszXml)
{
    CXmlDocument document;
    document.LoadXml(pszXml ? pszXml : "");
    CXmlElement* const pRoot = document.GetDocumentElement();
    FromXml_Int(pRoot, pRoot, CSerializationContext::m_defaultContext, false);
}

const std::string& CElement::GetName() const noexcept
{
    return m_pName->m_strLocalName;
}

void CElement::SetName(const char* pszName)
{
    FireOnChangeName(pszName);
    SetFullName(pszName ? pszName : "", GetNamespaceText());
}

void CElement::SetText(const char* pszText)
{
    FireOnChangeText(pszText);
    m_strText = pszText ? pszText : "";
}

void CElement::SetNamespace(const char* pszNamespace)
{
    FireOnChangeNamespace(pszNamespace);
    SetFullName(GetName(), pszNamespace ? pszNamespace : "");
}

const std::string& CElement::GetDefaultNamespace() const noexcept
{
    static const std::string strNone;
    return m_pDefaultNamespace ? *m_pDefaultNamespace : strNone;
}

CSmartPtr<CAttributeCol> CElement::GetAttributes() const
{
    return &Attributes();
}

CSmartPtr<CElementCol> CElement::GetElements() const
{
    return &Elements();
}

void CElement::FireOnChangeName(const char* /*pszName*/) {}

void CElement::FireOnChangeNamespace(const char* /*pszNamespace*/) {}

void CElement::FireOnChangeText(const char* /*pszText*/) {}

void CElement::ToXml_Int(CXmlWriter* pWriter, bool /*bIsRoot*/, const char* pszTargetNamespace,
                         const CSerializationContext& context, bool /*bOptionalChoice*/) const
{
    Tree::Write(*this, *pWriter, pszTargetNamespace, context);
}

// Deliberate: pCurrent is read, not pParent, so the inherited entries read the first child of a
// document; and nothing is cleared. Pinned by ElementReading.InheritedEntriesReadTheFirstChild.
CXmlElement* CElement::FromXml_Int(CXmlElement* /*pParent*/, CXmlElement* pCurrent,
                                   const CSerializationContext& context, bool /*bOptionalChoice*/)
{
    if (!pCurrent)
        return nullptr;
    const Rules& rules = GetRules();
    if (!CXmlObjectHelper::IsNamespaceValid(pCurrent->GetNamespaceURI(), rules.m_strRestriction,
                                            rules.m_strTargetNamespace)) {
        return pCurrent;
    }
    CXmlElement* const pFirst = pCurrent->GetFirstElement();
    if (!pCurrent->GetAttributes().empty())
        CXmlObjectBase::FromXml_Int(&Attributes(), pCurrent, pFirst, context);
    if (pFirst && CXmlObjectBase::FromXml_Int(&Elements(), pCurrent, pFirst, context)) {
        throw CQnValidationException(
            FormatString("Invalid Element [%s] found.", pCurrent->GetLocalName().c_str()),
            pCurrent->GetXPath());
    }
    m_strText = pCurrent->GetText();
    SetFullName(pCurrent->GetLocalName(), pCurrent->GetNamespaceURI());
    return pCurrent->GetNextSiblingElement();
}

const CElement::Rules& CElement::GetRules() const noexcept
{
    static const Rules anyRules{"##any", "", ""};
    return m_pRules ? *m_pRules : anyRules;
}

const std::string& CElement::GetNamespaceText() const noexcept
{
    return m_pName->m_strNamespace;
}

void CElement::SetFullName(std::string strName, std::string strNamespace)
{
    m_pName = std::make_shared<const Name>(Name{std::move(strName), std::move(strNamespace)});
}

CAttributeCol& CElement::Attributes() const
{
    if (!m_pAttributes) {
        const Rules& rules = GetRules();
        CSmartPtr<CAttributeCol> pAttributes(new CAttributeCol(
            rules.m_strCollectionNamespace.c_str(), "##any", rules.m_strTargetNamespace.c_str()));
        for (const AttributeRecord& record : m_vecRecords) {
            pAttributes->Add(record.m_pName->m_strLocalName.c_str(), record.m_strValue.c_str(),
                             record.m_pName->m_strNamespace.c_str());
        }
        m_pAttributes = pAttributes;
        std::vector<AttributeRecord>().swap(m_vecRecords);
    }
    return *m_pAttributes;
}

CElementCol& CElement::Elements() const
{
    if (!m_pElements) {
        const Rules& rules = GetRules();
        m_pElements = new CElementCol(rules.m_strCollectionNamespace.c_str(), "##any",
                                      rules.m_strTargetNamespace.c_str(), 0, -1);
    }
    return *m_pElements;
}

CXmlElement* CElement::ReadSiblings(CElementCol& col, CXmlElement* pCurrent,
                                    const std::string* pName, const std::string* pNamespace)
{
    Tree::Builder builder(col.m_strTargetNamespace);
    const auto Takes = [&](const CXmlElement& element) {
        if (pName)
            return element.GetLocalName() == *pName && element.GetNamespaceURI() == *pNamespace;
        return CXmlObjectHelper::IsNamespaceValid(element.GetNamespaceURI(), col.m_strRestriction,
                                                  col.m_strTargetNamespace);
    };
    while (pCurrent && Takes(*pCurrent)) {
        col.Add(builder.Build(*pCurrent).GetPtr());
        pCurrent = pCurrent->GetNextSiblingElement();
    }
    return pCurrent;
}

// ---- Building from a document

CSmartPtr<CElement> CElement::Tree::Builder::Build(const CXmlElement& source)
{
    CSmartPtr<CElement> pRoot = BuildWithoutChildren(source);
    m_vecStack.clear();
    if (const CXmlElement* pFirst = source.GetFirstElement())
        m_vecStack.push_back({&pRoot->Elements(), pFirst});
    while (!m_vecStack.empty()) {
        Frame& top = m_vecStack.back();
        const CXmlElement* const pSource = top.m_pNext;
        if (!pSource) {
            m_vecStack.pop_back();
            continue;
        }
        top.m_pNext = pSource->GetNextSiblingElement();
        const CSmartPtr<CElement> pElement = BuildWithoutChildren(*pSource);
        top.m_pChildren->AppendItem(pElement.GetPtr());
        if (const CXmlElement* pFirst = pSource->GetFirstElement())
            m_vecStack.push_back({&pElement->Elements(), pFirst});
    }
    return pRoot;
}

CSmartPtr<CElement> CElement::Tree::Builder::BuildWithoutChildren(const CXmlElement& source)
{
    CSmartPtr<CElement> pElement(new CElement);
    const Known& known = Know(source.GetLocalName(), source.GetNamespaceURI());
    pElement->m_pName = known.m_pName;
    pElement->m_pRules = known.m_pRules;
    pElement->m_strText = source.GetText();
    pElement->m_vecRecords.reserve(source.GetAttributes().size());
    for (const CXmlAttribute* pSource : source.GetAttributes()) {
        const std::string& strName = pSource->GetLocalName();
        pElement->m_vecRecords.push_back(
            {Know(strName, pSource->GetNamespaceURI()).m_pName, pSource->GetValue()});
        if (!m_pTargetNamespace && strName == "xmlns")
            pElement->m_pDefaultNamespace = Share(pSource->GetValue());
    }
    return pElement;
}

const CElement::Tree::Builder::Known& CElement::Tree::Builder::Know(const std::string& strLocalName,
                                                                    const std::string& strNamespace)
{
    Known& known = m_mapKnown[Key(&strLocalName, &strNamespace)];
    if (!known.m_pName) {
        known.m_pName = std::make_shared<const Name>(Name{strLocalName, strNamespace});
        if (m_pTargetNamespace && !(strNamespace.empty() && m_pTargetNamespace->empty())) {
            known.m_pRules =
                std::make_shared<const Rules>(Rules{"##any", *m_pTargetNamespace, strNamespace});
        }
    }
    return known;
}

// ---- Cloning

struct CElement::Tree::CloneFrame
{
    CElementCol* m_pChildren;
    const CNode* m_pNext;
};

CSmartPtr<CElement> CElement::Tree::Clone(const CElement& source)
{
    CSmartPtr<CElement> pRoot = CloneWithoutChildren(source);
    std::vector<CloneFrame> vecStack;
    if (source.m_pElements)
        vecStack.push_back({&pRoot->Elements(), source.m_pElements->begin()});
    while (!vecStack.empty()) {
        CloneFrame& top = vecStack.back();
        const CNode* const pNode = top.m_pNext;
        if (!pNode) {
            vecStack.pop_back();
            continue;
        }
        top.m_pNext = pNode->GetNext();
        const auto* pSource = dynamic_cast<const CElement*>(pNode->GetItem());
        if (!pSource)
            continue;
        const CSmartPtr<CElement> pElement = CloneWithoutChildren(*pSource);
        top.m_pChildren->AppendItem(pElement.GetPtr());
        if (pSource->m_pElements)
            vecStack.push_back({&pElement->Elements(), pSource->m_pElements->begin()});
    }
    return pRoot;
}

CSmartPtr<CElement> CElement::Tree::CloneWithoutChildren(const CElement& source)
{
    const Rules& rules = source.GetRules();
    CXmlObjectHelper::TestNamespace(source.GetNamespaceText(), rules.m_strRestriction,
                                    rules.m_strTargetNamespace);
    CSmartPtr<CElement> pClone(new CElement);
    pClone->m_pName = source.m_pName;
    pClone->m_strText = source.m_strText;
    pClone->m_pRules = source.m_pRules;
    // Deliberate: the default namespace stays behind. Pinned by
    // ElementWriting.ADefaultNamespaceTakesARoadOfItsOwn.
    pClone->m_vecRecords = source.m_vecRecords;
    if (source.m_pAttributes)
        pClone->m_pAttributes = source.m_pAttributes->Clone();
    return pClone;
}

// ---- Writing

// What an element with a default namespace writes into instead of the writer it was given. Inside
// another one it shares the stream, so text is copied once, however deep such elements nest.
struct CElement::Tree::DefaultScope
{
    // pEnclosing is the scope that `outer` is the writer of, null if it is of none.
    DefaultScope(CXmlTextWriter& outer, DefaultScope* pEnclosing,
                 const std::string& strDefaultNamespace)
        : m_outer(outer),
          m_pOwnStream(pEnclosing ? nullptr : std::make_unique<CTextStream>()),
          m_stream(pEnclosing ? pEnclosing->m_stream : *m_pOwnStream),
          m_writer(m_stream)
    {
        if (pEnclosing)
            m_outer.CloseParentElm();
        m_writer.SetEOLType(outer.GetEOLType());
        m_writer.SetFormat(outer.GetFormat());
        m_writer.SetDefaultNamespace(strDefaultNamespace);
        m_context.SetDefaultNamespaceURI(strDefaultNamespace.c_str());
    }

    void Finish()
    {
        if (!m_pOwnStream) {
            m_outer.WriteRawElement(""); // the text is there, its end of line is not
            return;
        }
        m_stream.Flush();
        m_outer.CloseParentElm();
        m_outer.WriteRawElement(m_stream.GetText());
    }

    CXmlTextWriter& m_outer;
    const std::unique_ptr<CTextStream> m_pOwnStream; // null inside another scope
    CTextStream& m_stream;
    CXmlTextWriter m_writer;
    CSerializationContext m_context;
};

struct CElement::Tree::WriteFrame
{
    const CElement* m_pElement;
    const CNode* m_pNext; // the child to be written next
    CXmlWriter* m_pWriter;
    const CSerializationContext* m_pContext;
    DefaultScope* m_pScope;                    // that m_pWriter belongs to; null if to none
    std::unique_ptr<DefaultScope> m_pOwnScope; // null without a default namespace
};

void CElement::Tree::Write(const CElement& element, CXmlWriter& writer,
                           const char* pszTargetNamespace, const CSerializationContext& context)
{
    WriteFrame root = Open(element, writer, nullptr, pszTargetNamespace, context);
    if (!root.m_pNext) {
        Close(root);
        return;
    }
    std::vector<WriteFrame> vecStack;
    vecStack.push_back(std::move(root));
    while (!vecStack.empty()) {
        WriteFrame& top = vecStack.back();
        if (!top.m_pNext) {
            Close(top);
            vecStack.pop_back();
            continue;
        }
        CXmlObjectBase* const pItem = top.m_pNext->GetItem();
        top.m_pNext = top.m_pNext->GetNext();
        if (!pItem)
            continue;
        if (typeid(*pItem) == typeid(CElement)) {
            vecStack.push_back(Open(static_cast<const CElement&>(*pItem), *top.m_pWriter,
                                    top.m_pScope, pszTargetNamespace, *top.m_pContext));
        }
        else {
            CXmlObjectBase::ToXml_Int(pItem->GetBase(), top.m_pWriter, false, pszTargetNamespace,
                                      *top.m_pContext, false);
        }
    }
}

CElement::Tree::WriteFrame CElement::Tree::Open(const CElement& element, CXmlWriter& writer,
                                                DefaultScope* pScope,
                                                const char* pszTargetNamespace,
                                                const CSerializationContext& context)
{
    WriteFrame frame{&element, element.m_pElements ? element.m_pElements->begin() : nullptr,
                     &writer,  &context,
                     pScope,   nullptr};
    if (!element.m_pDefaultNamespace) {
        writer.WriteStartElement(element.GetName(), element.GetNamespaceText());
        for (const AttributeRecord& record : element.m_vecRecords) {
            writer.WriteAttributeString(record.m_pName->m_strLocalName,
                                        record.m_pName->m_strNamespace, record.m_strValue,
                                        it_string);
        }
        if (element.m_pAttributes) {
            CXmlObjectBase::ToXml_Int(element.m_pAttributes.GetPtr(), &writer, false,
                                      pszTargetNamespace, context, false);
        }
        return frame;
    }
    auto* const pTextWriter = dynamic_cast<CXmlTextWriter*>(&writer);
    if (!pTextWriter) {
        throw CQnInvalidStateException(
            "An Element with a default namespace can only be written as XML text");
    }
    // Deliberate: the attributes of an element with a default namespace are not written, its
    // "xmlns" among them. Pinned by ElementWriting.ADefaultNamespaceTakesARoadOfItsOwn.
    frame.m_pOwnScope =
        std::make_unique<DefaultScope>(*pTextWriter, pScope, *element.m_pDefaultNamespace);
    frame.m_pScope = frame.m_pOwnScope.get();
    frame.m_pWriter = &frame.m_pScope->m_writer;
    frame.m_pContext = &frame.m_pScope->m_context;
    frame.m_pWriter->WriteStartElement(element.GetName(), element.GetNamespaceText());
    return frame;
}

// Deliberate: the text follows the children. Pinned by ElementWriting.ChildrenComeBeforeTheText.
void CElement::Tree::Close(WriteFrame& frame)
{
    frame.m_pWriter->WriteString(frame.m_pElement->m_strText, it_string, false);
    frame.m_pWriter->WriteEndElement();
    if (frame.m_pOwnScope)
        frame.m_pOwnScope->Finish();
}

} // namespace QnXmlLib16
