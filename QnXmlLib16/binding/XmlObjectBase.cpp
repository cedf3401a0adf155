#include "QnXmlLib16/binding/XmlObjectBase.h"

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/TextOrEmpty.h"

namespace QnXmlLib16 {

namespace {

[[noreturn]] void ThrowChoiceIsSet(const std::string& strSelected)
{
    // Deliberate spelling: callers match on message texts.
    throw CQnInvalidStateException(
        FormatString("The Property [%s] is already set. Only one element within this class bay be "
                     "set at a time",
                     strSelected.c_str()));
}

template <class T>
T* Require(T* pObject)
{
    if (!pObject)
        throw CQnInvalidParamException("The object may not be NULL");
    return pObject;
}

} // namespace

CXmlObjectBase::CXmlObjectBase()
{
    static std::atomic<bool> bMsgCreated{false};
    if (!bMsgCreated.load(std::memory_order_relaxed) && !bMsgCreated.exchange(true)) {
        try {
            CLicenceGate::GetGate()->FirstObject();
        }
        catch (...) {
            // A notice that fails is no reason to have no object.
        }
    }
}

CXmlObjectBase::~CXmlObjectBase() = default;

void CXmlObjectBase::OnEvent(CXmlObjectBase*, MsgType, void*) {}

void CXmlObjectBase::AttributesToXml_Int(CXmlWriter*, const CSerializationContext&) const {}

long long CXmlObjectBase::Release()
{
    const long long nCount = m_nRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (nCount == 0)
        delete this;
    return nCount;
}

void CXmlObjectBase::SetElementName(const char* pszName)
{
    m_strElementName = OrEmpty(pszName);
}

void CXmlObjectBase::ToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter, bool bIsRoot,
                               const char* pszTargetNamespace, const CSerializationContext& context,
                               bool bOptionalChoice)
{
    Require(pObject)->ToXml_Int(pWriter, bIsRoot, pszTargetNamespace, context, bOptionalChoice);
}

void CXmlObjectBase::AttributesToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter,
                                         const CSerializationContext& context)
{
    Require(pObject)->AttributesToXml_Int(pWriter, context);
}

CXmlElement* CXmlObjectBase::FromXml_Int(CXmlObjectBase* pObject, CXmlElement* pElement,
                                         CXmlElement* pCursor, const CSerializationContext& context)
{
    return Require(pObject)->FromXml_Int(pElement, pCursor, context, false);
}

void CXmlObjectBase::Choice_SelectElement(const char* pszName, CXmlObjectBase* pValue,
                                          std::string& strSelected)
{
    const char* const pszMember = OrEmpty(pszName);
    if (strSelected == pszMember) {
        if (!pValue)
            strSelected.clear();
    }
    else if (strSelected.empty()) {
        // Deliberate: a null value selects too, so after it no other member can be set until this
        // one is set to null once more. Pinned by Choice.IsSelectedByWhatAMemberIsSetTo.
        strSelected = pszMember;
    }
    else if (pValue) {
        ThrowChoiceIsSet(strSelected);
    }
}

void CXmlObjectBase::Choice_CollectionChanged(const char* pszName, long nCount,
                                              std::string& strSelected)
{
    const char* const pszMember = OrEmpty(pszName);
    if (strSelected == pszMember) {
        if (nCount == 0)
            strSelected.clear();
    }
    else if (strSelected.empty()) {
        if (nCount > 0)
            strSelected = pszMember;
    }
    else if (nCount != 0) {
        ThrowChoiceIsSet(strSelected);
    }
}

void CXmlObjectBase::Choice_SetElementValid(bool bValid, const char* pszName,
                                            std::string& strSelected)
{
    if (!bValid) {
        // Deliberate: whichever member is selected, it is not any more. Pinned by
        // Choice.IsSelectedByWhatAMemberIsSetTo.
        strSelected.clear();
        return;
    }
    // Deliberate: an empty selection fails as well, with an empty name in the message, so this
    // can't make a first selection. Pinned as above. The brackets that the other two have around
    // the name are missing.
    if (strSelected != OrEmpty(pszName)) {
        throw CQnInvalidStateException(
            FormatString("The Property %s is already set. Only one element within this class bay "
                         "be set at a time",
                         strSelected.c_str()));
    }
}

void CXmlObjectBase::Throw_IfPropertyIsNull(CXmlObjectBase* pValue, const char* pszName)
{
    // Deliberate spelling: callers match on message texts.
    if (!pValue) {
        throw CQnInvalidParamException(
            FormatString("The Property [%s] is mandatory, it may node be NULL", OrEmpty(pszName)));
    }
}

void CXmlObjectBase::Throw_IfElementNameDiffers(CXmlObjectBase* pValue, const char* pszName)
{
    if (!pValue)
        return;
    const std::string& strActual = pValue->GetBase()->m_strElementName;
    if (strActual != OrEmpty(pszName)) {
        throw CQnInvalidParamException(
            FormatString("This property requires an element with the name %s the element being "
                         "set has the element name %s",
                         OrEmpty(pszName), strActual.c_str()));
    }
}

void CXmlObjectBase::TestNamespace(const char* pszNamespace, const char* pszNamespaces,
                                   const char* pszTargetNamespace)
{
    CXmlObjectHelper::TestNamespace(OrEmpty(pszNamespace), OrEmpty(pszNamespaces),
                                    OrEmpty(pszTargetNamespace));
}

bool CXmlObjectBase::IsNamespaceValid(const char* pszNamespace, const char* pszNamespaces,
                                      const char* pszTargetNamespace)
{
    return CXmlObjectHelper::IsNamespaceValid(OrEmpty(pszNamespace), OrEmpty(pszNamespaces),
                                              OrEmpty(pszTargetNamespace));
}

bool CXmlObjectBase::DoesElementNameMatch(const CSerializationContext& context,
                                          const CXmlElement* pElement, const char* pszName,
                                          const char* pszNamespace)
{
    return CXmlObjectHelper::DoesElementNameMatch(context, pElement, OrEmpty(pszName),
                                                  OrEmpty(pszNamespace));
}

} // namespace QnXmlLib16
