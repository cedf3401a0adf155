#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <string>
#include <utility>

namespace Gpx {

class CExtensionsType;
class CMetadataType;
class CRteTypeCol;
class CTrkTypeCol;
class CWptTypeCol;

// gpxType: the root of a document.
class CGpxType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Metadata,
        Property_Wpt,
        Property_Rte,
        Property_Trk,
        Property_Extensions,
        Property_Version,
        Property_Creator
    };

    CGpxType();
    ~CGpxType() override;

    // "1.1". Setting anything else throws CQnInvalidParamException.
    const std::string& GetVersion() const { return m_strVersion; }
    void SetVersion(const std::string& value);
    // The program that made the document.
    const std::string& GetCreator() const { return m_strCreator; }
    void SetCreator(std::string value) { m_strCreator = std::move(value); }

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CMetadataType> GetMetadata() const;
    void SetMetadata(CMetadataType* pValue);
    QnXmlLib16::CSmartPtr<CExtensionsType> GetExtensions() const;
    void SetExtensions(CExtensionsType* pValue);

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<CWptTypeCol> GetWpt() const;
    QnXmlLib16::CSmartPtr<CRteTypeCol> GetRte() const;
    QnXmlLib16::CSmartPtr<CTrkTypeCol> GetTrk() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    static constexpr const char* kVersion = "1.1";

    const CMetaData& GetMetaData() const override;

    QnXmlLib16::CSmartPtr<CMetadataType> m_pMetadata;
    const QnXmlLib16::CSmartPtr<CWptTypeCol> m_pWpt;
    const QnXmlLib16::CSmartPtr<CRteTypeCol> m_pRte;
    const QnXmlLib16::CSmartPtr<CTrkTypeCol> m_pTrk;
    QnXmlLib16::CSmartPtr<CExtensionsType> m_pExtensions;
    std::string m_strVersion = kVersion;
    std::string m_strCreator;
};

} // namespace Gpx
