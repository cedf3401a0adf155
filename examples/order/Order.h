// Bound classes for a small purchase order, in the form that a generator gives to this content:
//
//   order (OrderType), a sequence; attribute number (integer above 0, required)
//       shipTo (AddressType): all of street, city and, optional, country
//       payment (PaymentType): a choice of card and transfer (AccountType: attribute number)
//       deliverBy (date, nillable)
//       delivery (DeliveryType, abstract): a ParcelType (weight) or a PickupType (shop) by xsi:type
//       line (LineType), one or more: attribute sku; quantity and price
//       note (string of up to 40 characters), up to three
#pragma once

#include "QnXmlLib16/collections/stringCol.h"
#include "examples/common/GeneratedSupport.h"

#include <optional>
#include <string>
#include <utility>

namespace Orders {

inline constexpr const char* kNamespace = "urn:example:order";

// Base of the classes of this schema.
class COrderClass : public GeneratedSupport::CBoundClass
{
public:
    std::string GetTargetNamespace() const override { return kNamespace; }
    std::string GetNamespace() const override { return kNamespace; }
};

class CAddress : public COrderClass
{
public:
    CAddress();
    ~CAddress() override;

    const std::string& GetStreet() const { return m_strStreet; }
    void SetStreet(std::string value) { m_strStreet = std::move(value); }
    const std::string& GetCity() const { return m_strCity; }
    void SetCity(std::string value) { m_strCity = std::move(value); }
    const std::optional<std::string>& GetCountry() const { return m_country; }
    void SetCountry(std::optional<std::string> value) { m_country = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Street,
        Property_City,
        Property_Country
    };

    const CMetaData& GetMetaData() const override;

    std::string m_strStreet;
    std::string m_strCity;
    std::optional<std::string> m_country;
};

class CAccount : public COrderClass
{
public:
    // As "card" or as "transfer".
    explicit CAccount(const char* pszElementName);
    ~CAccount() override;

    const std::string& GetNumber() const { return m_strNumber; }
    void SetNumber(std::string value) { m_strNumber = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Number
    };

    const CMetaData& GetMetaData() const override;

    std::string m_strNumber;
};

class CPayment : public COrderClass
{
public:
    CPayment();
    ~CPayment() override;

    // One of the two at most: setting the second throws CQnInvalidStateException; setting null
    // makes room.
    QnXmlLib16::CSmartPtr<CAccount> GetCard() const { return m_pCard; }
    void SetCard(CAccount* pValue);
    QnXmlLib16::CSmartPtr<CAccount> GetTransfer() const { return m_pTransfer; }
    void SetTransfer(CAccount* pValue);
    // The element name of the one that is set, empty for none.
    const std::string& GetSelected() const { return m_strSelected; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Card,
        Property_Transfer
    };

    const CMetaData& GetMetaData() const override;
    void Select(const char* pszName, CAccount* pValue, QnXmlLib16::CSmartPtr<CAccount>& pMember);

    QnXmlLib16::CSmartPtr<CAccount> m_pCard;
    QnXmlLib16::CSmartPtr<CAccount> m_pTransfer;
    std::string m_strSelected;
};

// Abstract: the document tells by xsi:type which of the two below it is.
class CDelivery : public COrderClass
{
public:
    ~CDelivery() override;

protected:
    CDelivery();
};

class CParcel : public CDelivery
{
public:
    CParcel();
    ~CParcel() override;

    // Kilograms.
    const QnXmlLib16::CDecimal& GetWeight() const { return m_weight; }
    void SetWeight(const QnXmlLib16::CDecimal& value) { m_weight = value; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Weight
    };

    const CMetaData& GetMetaData() const override;

    QnXmlLib16::CDecimal m_weight;
};

class CPickup : public CDelivery
{
public:
    CPickup();
    ~CPickup() override;

    const std::string& GetShop() const { return m_strShop; }
    void SetShop(std::string value) { m_strShop = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Shop
    };

    const CMetaData& GetMetaData() const override;

    std::string m_strShop;
};

class CLine : public COrderClass
{
public:
    CLine();
    ~CLine() override;

    const std::string& GetSku() const { return m_strSku; }
    void SetSku(std::string value) { m_strSku = std::move(value); }
    long GetQuantity() const { return m_nQuantity; }
    void SetQuantity(long value) { m_nQuantity = value; }
    const QnXmlLib16::CDecimal& GetPrice() const { return m_price; }
    void SetPrice(const QnXmlLib16::CDecimal& value) { m_price = value; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Sku,
        Property_Quantity,
        Property_Price
    };

    const CMetaData& GetMetaData() const override;

    std::string m_strSku;
    long m_nQuantity = 1;
    QnXmlLib16::CDecimal m_price;
};

class CLineCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new line at the end.
    QnXmlLib16::CSmartPtr<CLine> Add();
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CLine> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
};

class COrder : public COrderClass
{
public:
    COrder();
    ~COrder() override;

    long GetNumber() const { return m_nNumber; }
    void SetNumber(long value) { m_nNumber = value; }
    // Never null; null throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CAddress> GetShipTo() const { return m_pShipTo; }
    void SetShipTo(CAddress* pValue);
    QnXmlLib16::CSmartPtr<CPayment> GetPayment() const { return m_pPayment; }
    void SetPayment(CPayment* pValue);
    // No date is written as a nil element.
    const std::optional<QnXmlLib16::CDateTime>& GetDeliverBy() const { return m_deliverBy; }
    void SetDeliverBy(std::optional<QnXmlLib16::CDateTime> value)
    {
        m_deliverBy = std::move(value);
    }
    // Null until it is set, and then not null again.
    QnXmlLib16::CSmartPtr<CDelivery> GetDelivery() const { return m_pDelivery; }
    void SetDelivery(CDelivery* pValue);
    // The same ones for the life of the order.
    QnXmlLib16::CSmartPtr<CLineCol> GetLine() const { return m_pLine; }
    QnXmlLib16::CSmartPtr<QnXmlLib16::CstringCol> GetNote() const { return m_pNote; }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    enum Property : int
    {
        Property_Number,
        Property_ShipTo,
        Property_Payment,
        Property_DeliverBy,
        Property_Delivery,
        Property_Line,
        Property_Note
    };

    const CMetaData& GetMetaData() const override;

    long m_nNumber = 0;
    QnXmlLib16::CSmartPtr<CAddress> m_pShipTo;
    QnXmlLib16::CSmartPtr<CPayment> m_pPayment;
    std::optional<QnXmlLib16::CDateTime> m_deliverBy;
    QnXmlLib16::CSmartPtr<CDelivery> m_pDelivery;
    const QnXmlLib16::CSmartPtr<CLineCol> m_pLine;
    const QnXmlLib16::CSmartPtr<QnXmlLib16::CstringCol> m_pNote;
};

} // namespace Orders
