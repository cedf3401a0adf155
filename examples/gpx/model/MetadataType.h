#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <string>
#include <utility>

namespace Gpx {

class CBoundsType;
class CCopyrightType;
class CExtensionsType;
class CLinkTypeCol;
class CPersonType;

// metadataType: what a document tells of itself.
class CMetadataType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Name,
        Property_Desc,
        Property_Author,
        Property_Copyright,
        Property_Link,
        Property_Time,
        Property_Keywords,
        Property_Bounds,
        Property_Extensions
    };

    CMetadataType();
    ~CMetadataType() override;

    const std::optional<std::string>& GetName() const { return m_name; }
    void SetName(std::optional<std::string> value) { m_name = std::move(value); }
    const std::optional<std::string>& GetDesc() const { return m_desc; }
    void SetDesc(std::optional<std::string> value) { m_desc = std::move(value); }
    // When it was made.
    const std::optional<QnXmlLib16::CDateTime>& GetTime() const { return m_time; }
    void SetTime(std::optional<QnXmlLib16::CDateTime> value) { m_time = std::move(value); }
    // Separated by commas.
    const std::optional<std::string>& GetKeywords() const { return m_keywords; }
    void SetKeywords(std::optional<std::string> value) { m_keywords = std::move(value); }

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CPersonType> GetAuthor() const;
    void SetAuthor(CPersonType* pValue);
    QnXmlLib16::CSmartPtr<CCopyrightType> GetCopyright() const;
    void SetCopyright(CCopyrightType* pValue);
    QnXmlLib16::CSmartPtr<CBoundsType> GetBounds() const;
    void SetBounds(CBoundsType* pValue);
    QnXmlLib16::CSmartPtr<CExtensionsType> GetExtensions() const;
    void SetExtensions(CExtensionsType* pValue);

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<CLinkTypeCol> GetLink() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::optional<std::string> m_name;
    std::optional<std::string> m_desc;
    QnXmlLib16::CSmartPtr<CPersonType> m_pAuthor;
    QnXmlLib16::CSmartPtr<CCopyrightType> m_pCopyright;
    const QnXmlLib16::CSmartPtr<CLinkTypeCol> m_pLink;
    std::optional<QnXmlLib16::CDateTime> m_time;
    std::optional<std::string> m_keywords;
    QnXmlLib16::CSmartPtr<CBoundsType> m_pBounds;
    QnXmlLib16::CSmartPtr<CExtensionsType> m_pExtensions;
};

} // namespace Gpx
