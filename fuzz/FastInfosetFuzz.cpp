// Bytes behind the identification of a Fast Infoset document.

#include "fuzz/FuzzRoads.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nLength)
{
    Fuzz::IntoObjects(
        [&](QnXmlLib16::CXmlObjectBase& object, const QnXmlLib16::CSerializationContext& context) {
            std::string strBytes("\xE0\x00\x00\x01", 4);
            strBytes.append(reinterpret_cast<const char*>(pData), nLength);
            object.FromXmlStream(reinterpret_cast<unsigned char*>(strBytes.data()), strBytes.size(),
                                 context);
        });
    return 0;
}
