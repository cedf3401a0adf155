#pragma once

#include "examples/gpx/model/GpxClass.h"

#include <optional>
#include <string>
#include <utility>

namespace Gpx {

// copyrightType: who holds the copyright, from which year, under which licence.
class CCopyrightType : public CGpxClass
{
public:
    enum Property : int
    {
        Property_Author,
        Property_Year,
        Property_License
    };

    CCopyrightType();
    ~CCopyrightType() override;

    const std::string& GetAuthor() const { return m_strAuthor; }
    void SetAuthor(std::string value) { m_strAuthor = std::move(value); }
    const std::optional<unsigned short>& GetYear() const { return m_year; }
    void SetYear(std::optional<unsigned short> value) { m_year = std::move(value); }
    // Where the text of the licence lies.
    const std::optional<std::string>& GetLicense() const { return m_license; }
    void SetLicense(std::optional<std::string> value) { m_license = std::move(value); }

    void AccessProperty(int nProperty, bool bRead, QnXmlLib16::QnVariant& value) override;
    void Init() override;

private:
    const CMetaData& GetMetaData() const override;

    std::string m_strAuthor;
    std::optional<unsigned short> m_year;
    std::optional<std::string> m_license;
};

} // namespace Gpx
