#pragma once

#include "examples/gpx/model/GpxClass.h"

namespace QnXmlLib16 {
class CElementCol;
}

namespace Gpx {

// extensionsType: elements of other schemas.
class CExtensionsType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_AnyElement
    };

    CExtensionsType();
    ~CExtensionsType() override;

    // Never null, and the same one for the life of this object.
    QnXmlLib16::CSmartPtr<QnXmlLib16::CElementCol> GetAnyElement() const;

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    const QnXmlLib16::CSmartPtr<QnXmlLib16::CElementCol> m_pAnyElement;
};

} // namespace Gpx
