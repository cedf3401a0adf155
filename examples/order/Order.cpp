#include "examples/order/Order.h"

#include "QnXmlLib16/binding/ClassfactoryBase.h"
#include "QnXmlLib16/binding/ElementInfoAll.h"
#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Orders {

namespace {

constexpr CWhitespaceUtils::WhitespaceRule kPreserve = CWhitespaceUtils::WhitespaceRule_Preserve;
constexpr CWhitespaceUtils::WhitespaceRule kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

const CPrimitiveRestrictions kNoFacets;

CParentElementInfo* Describe(XmlElementGroupType group, const char* pszType, bool bWriteType)
{
    return new CParentElementInfo(group, XmlElementType_Element, pszType, kNamespace, true,
                                  bWriteType, -1, it_none, nullptr, false);
}

CPrimitiveRestrictions AtLeast(const char* pszMinInclusive)
{
    return CPrimitiveRestrictions(nullptr, -1, -1, pszMinInclusive, nullptr, nullptr, nullptr, -1,
                                  -1, -1);
}

// Makes the children of abstract type.
class COrderClassFactory : public CClassfactoryBase
{
public:
    // Null for a type that is no delivery.
    static CSmartPtr<CXmlObjectBase> CreateDelivery(CXmlElement* pElement)
    {
        const std::string strType = GetElementType(pElement);
        if (GetElementTypeNamespaceUri(pElement) != kNamespace)
            return nullptr;
        if (strType == "ParcelType")
            return new CParcel;
        if (strType == "PickupType")
            return new CPickup;
        return nullptr;
    }
};

CSmartPtr<CXmlObjectBase> CreateAccount(int, const char* pszElementName)
{
    return new CAccount(pszElementName);
}

} // namespace

const CAddress::CMetaData& CAddress::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_All, "AddressType", false));
        table.Add(new CElementInfoAllPrimMnd("street", kNamespace, Property_Street, false,
                                             it_string, nullptr, kPreserve, kNoFacets, nullptr));
        table.Add(new CElementInfoAllPrimMnd("city", kNamespace, Property_City, false, it_string,
                                             nullptr, kPreserve, kNoFacets, nullptr));
        table.Add(new CElementInfoAllPrimOpt("country", kNamespace, Property_Country, false,
                                             it_string, nullptr, kPreserve, kNoFacets, nullptr));
    });
    return data;
}

CAddress::CAddress()
{
    SetElementName("shipTo");
}

CAddress::~CAddress() = default;

void CAddress::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Street:
        return Access(bRead, value, m_strStreet);
    case Property_City:
        return Access(bRead, value, m_strCity);
    default:
        return Access(bRead, value, m_country);
    }
}

void CAddress::Init()
{
    m_strStreet.clear();
    m_strCity.clear();
    m_country.reset();
}

const CAccount::CMetaData& CAccount::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Sequence, "AccountType", false));
        table.Add(new CAttributeInfoPrimitive("number", "", Property_Number, false, it_string,
                                              nullptr, kCollapse, kNoFacets, nullptr));
    });
    return data;
}

CAccount::CAccount(const char* pszElementName)
{
    SetElementName(pszElementName);
}

CAccount::~CAccount() = default;

void CAccount::AccessProperty(int, bool bRead, QnVariant& value)
{
    Access(bRead, value, m_strNumber);
}

void CAccount::Init()
{
    m_strNumber.clear();
}

const CPayment::CMetaData& CPayment::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Choice, "PaymentType", false));
        table.Add(new CElementInfoChoiceClsOpt("card", kNamespace, Property_Card,
                                               XmlElementType_Element, CreateAccount, 0));
        table.Add(new CElementInfoChoiceClsOpt("transfer", kNamespace, Property_Transfer,
                                               XmlElementType_Element, CreateAccount, 0));
    });
    return data;
}

CPayment::CPayment()
{
    SetElementName("payment");
}

CPayment::~CPayment() = default;

void CPayment::SetCard(CAccount* pValue)
{
    Select("card", pValue, m_pCard);
}

void CPayment::SetTransfer(CAccount* pValue)
{
    Select("transfer", pValue, m_pTransfer);
}

void CPayment::Select(const char* pszName, CAccount* pValue, CSmartPtr<CAccount>& pMember)
{
    Throw_IfElementNameDiffers(pValue, pszName);
    if (pValue || m_strSelected == pszName)
        Choice_SelectElement(pszName, pValue, m_strSelected);
    pMember = pValue;
}

void CPayment::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Card:
        return bRead ? value.SetXmlObject(m_pCard.GetPtr()) : SetCard(GetObjectOf<CAccount>(value));
    default:
        return bRead ? value.SetXmlObject(m_pTransfer.GetPtr())
                     : SetTransfer(GetObjectOf<CAccount>(value));
    }
}

void CPayment::Init()
{
    m_pCard.Reset();
    m_pTransfer.Reset();
    m_strSelected.clear();
}

CDelivery::CDelivery()
{
    SetElementName("delivery");
}

CDelivery::~CDelivery() = default;

const CParcel::CMetaData& CParcel::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Sequence, "ParcelType", true));
        table.Add(new CElementInfoSeqPrimMnd("weight", kNamespace, Property_Weight, false,
                                             it_decimal, nullptr, kCollapse, AtLeast("0"),
                                             nullptr));
    });
    return data;
}

CParcel::CParcel() = default;
CParcel::~CParcel() = default;

void CParcel::AccessProperty(int, bool bRead, QnVariant& value)
{
    Access(bRead, value, m_weight);
}

void CParcel::Init()
{
    m_weight = CDecimal();
}

const CPickup::CMetaData& CPickup::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Sequence, "PickupType", true));
        table.Add(new CElementInfoSeqPrimMnd("shop", kNamespace, Property_Shop, false, it_string,
                                             nullptr, kPreserve, kNoFacets, nullptr));
    });
    return data;
}

CPickup::CPickup() = default;
CPickup::~CPickup() = default;

void CPickup::AccessProperty(int, bool bRead, QnVariant& value)
{
    Access(bRead, value, m_strShop);
}

void CPickup::Init()
{
    m_strShop.clear();
}

const CLine::CMetaData& CLine::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Sequence, "LineType", false));
        table.Add(new CElementInfoSeqPrimMnd("quantity", kNamespace, Property_Quantity, false,
                                             it_i4, nullptr, kCollapse, AtLeast("1"), nullptr));
        table.Add(new CElementInfoSeqPrimMnd(
            "price", kNamespace, Property_Price, false, it_decimal, nullptr, kCollapse,
            CPrimitiveRestrictions(nullptr, -1, -1, "0", nullptr, nullptr, nullptr, -1, -1, 2),
            nullptr));
        table.Add(new CAttributeInfoPrimitive(
            "sku", "", Property_Sku, false, it_string, nullptr, kCollapse,
            CPrimitiveRestrictions("[A-Z]{2}-[0-9]+", -1, -1, nullptr, nullptr, nullptr, nullptr,
                                   -1, -1, -1),
            nullptr));
    });
    return data;
}

CLine::CLine()
{
    SetElementName("line");
}

CLine::~CLine() = default;

void CLine::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Sku:
        return Access(bRead, value, m_strSku);
    case Property_Quantity:
        return Access(bRead, value, m_nQuantity);
    default:
        return Access(bRead, value, m_price);
    }
}

void CLine::Init()
{
    m_strSku.clear();
    m_nQuantity = 1;
    m_price = CDecimal();
}

CSmartPtr<CLine> CLineCol::Add()
{
    const CSmartPtr<CLine> pItem = new CLine;
    Append(pItem.GetPtr());
    return pItem;
}

CSmartPtr<CLine> CLineCol::Item(int iIndex) const
{
    return static_cast<CLine*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CLineCol::CreateItem() const
{
    return new CLine;
}

const COrder::CMetaData& COrder::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(Describe(XmlElementGroupType_Sequence, "OrderType", false));
        table.Add(new CElementInfoSeqClsMnd("shipTo", kNamespace, Property_ShipTo,
                                            XmlElementType_Element, nullptr, 0, true));
        table.Add(new CElementInfoSeqClsMnd("payment", kNamespace, Property_Payment,
                                            XmlElementType_Element, nullptr, 0, true));
        table.Add(new CElementInfoSeqPrimMnd("deliverBy", kNamespace, Property_DeliverBy, true,
                                             it_date, nullptr, kCollapse, kNoFacets, nullptr));
        table.Add(new CElementInfoSeqAbsClsMnd("delivery", kNamespace, Property_Delivery,
                                               XmlElementType_Element,
                                               COrderClassFactory::CreateDelivery));
        table.Add(
            new CElementInfoSeqClsCol("line", kNamespace, Property_Line, XmlElementType_Element));
        table.Add(new CElementInfoSeqPrimCol("note", kNamespace, Property_Note));
        table.Add(new CAttributeInfoPrimitive("number", "", Property_Number, false, it_i4, nullptr,
                                              kCollapse, AtLeast("1"), nullptr));
    });
    return data;
}

COrder::COrder()
    : m_pShipTo(new CAddress),
      m_pPayment(new CPayment),
      m_pLine(new CLineCol("line", kNamespace, 1, -1)),
      m_pNote(new CstringCol("note", kNamespace, 0, 3, nullptr, -1, 40, nullptr, nullptr, nullptr,
                             nullptr, -1, -1, -1, kPreserve, nullptr))
{
    SetElementName("order");
}

COrder::~COrder() = default;

void COrder::SetShipTo(CAddress* pValue)
{
    Throw_IfPropertyIsNull(pValue, "shipTo");
    Throw_IfElementNameDiffers(pValue, "shipTo");
    m_pShipTo = pValue;
}

void COrder::SetPayment(CPayment* pValue)
{
    Throw_IfPropertyIsNull(pValue, "payment");
    Throw_IfElementNameDiffers(pValue, "payment");
    m_pPayment = pValue;
}

void COrder::SetDelivery(CDelivery* pValue)
{
    Throw_IfPropertyIsNull(pValue, "delivery");
    Throw_IfElementNameDiffers(pValue, "delivery");
    m_pDelivery = pValue;
}

void COrder::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Number:
        return Access(bRead, value, m_nNumber);
    case Property_ShipTo:
        return bRead ? value.SetXmlObject(m_pShipTo.GetPtr())
                     : SetShipTo(GetObjectOf<CAddress>(value));
    case Property_Payment:
        return bRead ? value.SetXmlObject(m_pPayment.GetPtr())
                     : SetPayment(GetObjectOf<CPayment>(value));
    case Property_DeliverBy:
        if (!bRead)
            m_deliverBy = value.GetDate();
        else if (m_deliverBy)
            value.SetDate(*m_deliverBy);
        else
            value.SetNil();
        return;
    case Property_Delivery:
        return bRead ? value.SetXmlObject(m_pDelivery.GetPtr())
                     : SetDelivery(GetObjectOf<CDelivery>(value));
    case Property_Line:
        return value.SetXmlCollection(m_pLine.GetPtr());
    default:
        return value.SetXmlCollection(m_pNote.GetPtr());
    }
}

// A nil deliverBy leaves the property as it is made here.
void COrder::Init()
{
    m_nNumber = 0;
    m_pShipTo = new CAddress;
    m_pPayment = new CPayment;
    m_deliverBy.reset();
    m_pDelivery.Reset();
    m_pLine->Clear();
    m_pNote->Clear();
}

} // namespace Orders
