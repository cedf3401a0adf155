#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <string>
#include <utility>

namespace Gpx {

class CExtensionsType;
class CLinkTypeCol;
class CWptTypeCol;

// rteType: a route, the points that lead to a destination.
class CRteType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Name,
        Property_Cmt,
        Property_Desc,
        Property_Src,
        Property_Link,
        Property_Number,
        Property_Type,
        Property_Extensions,
        Property_Rtept
    };

    CRteType();
    ~CRteType() override;

    const std::optional<std::string>& GetName() const { return m_name; }
    void SetName(std::optional<std::string> value) { m_name = std::move(value); }
    const std::optional<std::string>& GetCmt() const { return m_cmt; }
    void SetCmt(std::optional<std::string> value) { m_cmt = std::move(value); }
    const std::optional<std::string>& GetDesc() const { return m_desc; }
    void SetDesc(std::optional<std::string> value) { m_desc = std::move(value); }
    const std::optional<std::string>& GetSrc() const { return m_src; }
    void SetSrc(std::optional<std::string> value) { m_src = std::move(value); }
    const std::optional<QnXmlLib16::CBigInteger>& GetNumber() const { return m_number; }
    void SetNumber(std::optional<QnXmlLib16::CBigInteger> value) { m_number = std::move(value); }
    const std::optional<std::string>& GetType() const { return m_type; }
    void SetType(std::optional<std::string> value) { m_type = std::move(value); }

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CExtensionsType> GetExtensions() const;
    void SetExtensions(CExtensionsType* pValue);

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<CLinkTypeCol> GetLink() const;
    QnXmlLib16::CSmartPtr<CWptTypeCol> GetRtept() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::optional<std::string> m_name;
    std::optional<std::string> m_cmt;
    std::optional<std::string> m_desc;
    std::optional<std::string> m_src;
    const QnXmlLib16::CSmartPtr<CLinkTypeCol> m_pLink;
    std::optional<QnXmlLib16::CBigInteger> m_number;
    std::optional<std::string> m_type;
    QnXmlLib16::CSmartPtr<CExtensionsType> m_pExtensions;
    const QnXmlLib16::CSmartPtr<CWptTypeCol> m_pRtept;
};

// Routes.
class CRteTypeCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new item at the end.
    QnXmlLib16::CSmartPtr<CRteType> Add();
    // Shares the item.
    void Add(CRteType* pItem);
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CRteType> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
};

} // namespace Gpx
