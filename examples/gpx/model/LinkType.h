#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <string>
#include <utility>

namespace Gpx {

// linkType: the URL of an external resource, such as a web page or a picture.
class CLinkType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Href,
        Property_Text,
        Property_Type
    };

    CLinkType();
    ~CLinkType() override;

    const std::string& GetHref() const { return m_strHref; }
    void SetHref(std::string value) { m_strHref = std::move(value); }
    // Text of the link.
    const std::optional<std::string>& GetText() const { return m_text; }
    void SetText(std::optional<std::string> value) { m_text = std::move(value); }
    // Media type, such as "image/jpeg".
    const std::optional<std::string>& GetType() const { return m_type; }
    void SetType(std::optional<std::string> value) { m_type = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::string m_strHref;
    std::optional<std::string> m_text;
    std::optional<std::string> m_type;
};

// Links, in the order of the document.
class CLinkTypeCol : public GeneratedSupport::CBoundCol
{
public:
    using CBoundCol::CBoundCol;

    // A new item at the end.
    QnXmlLib16::CSmartPtr<CLinkType> Add();
    // Shares the item.
    void Add(CLinkType* pItem);
    // Counted from 0; throws CQnInvalidParamException beyond the end.
    QnXmlLib16::CSmartPtr<CLinkType> Item(int iIndex) const;

protected:
    QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> CreateItem() const override;
};

} // namespace Gpx
