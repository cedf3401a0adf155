// Bytes as JSON text.

#include "fuzz/FuzzRoads.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nLength)
{
    const std::string strJson(reinterpret_cast<const char*>(pData), nLength);
    Fuzz::IntoObjects(
        [&](QnXmlLib16::CXmlObjectBase& object, const QnXmlLib16::CSerializationContext& context) {
            object.FromJson(strJson.c_str(), context);
        });
    return 0;
}
