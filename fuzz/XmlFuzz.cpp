// Bytes as XML text, plain or compressed.

#include "fuzz/FuzzRoads.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nLength)
{
    Fuzz::IntoObjects(
        [&](QnXmlLib16::CXmlObjectBase& object, const QnXmlLib16::CSerializationContext& context) {
            std::string strBytes(reinterpret_cast<const char*>(pData), nLength);
            object.FromXmlStream(reinterpret_cast<unsigned char*>(strBytes.data()), strBytes.size(),
                                 context);
        });
    return 0;
}
