#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <string>
#include <utility>

namespace Gpx {

class CEmailType;
class CLinkType;

// personType: a person or an organisation.
class CPersonType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Name,
        Property_Email,
        Property_Link
    };

    CPersonType();
    ~CPersonType() override;

    const std::optional<std::string>& GetName() const { return m_name; }
    void SetName(std::optional<std::string> value) { m_name = std::move(value); }

    // Null is none. An object of another element name throws CQnInvalidParamException.
    QnXmlLib16::CSmartPtr<CEmailType> GetEmail() const;
    void SetEmail(CEmailType* pValue);
    QnXmlLib16::CSmartPtr<CLinkType> GetLink() const;
    void SetLink(CLinkType* pValue);

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::optional<std::string> m_name;
    QnXmlLib16::CSmartPtr<CEmailType> m_pEmail;
    QnXmlLib16::CSmartPtr<CLinkType> m_pLink;
};

} // namespace Gpx
