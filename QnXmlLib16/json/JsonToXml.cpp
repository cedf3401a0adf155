#include "QnXmlLib16/json/JsonTextReader.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonReaderToXmlHandler.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

#include <climits>

namespace QnXmlLib16 {

namespace {

// Takes as much text as a JSON text may have. A short JSON text can ask for far more: elements
// that its shape leaves open indent all that follows, and each item of an array repeats the name.
class CConversionStream : public CTextStream
{
public:
    CConversionStream() : CTextStream(XmlEncoding_UTF8) {}

    void Flush() override
    {
        if (GetLength() > static_cast<unsigned long>(INT_MAX))
            throw CQnException("The XML text is too long.");
    }
};

} // namespace

CBinaryData CJsonTextReader::ConvertJsonToXml(const std::string& strText,
                                              const CSerializationContext& context)
{
    CJsonTextReader reader(strText);
    return Convert(reader, context);
}

CBinaryData CJsonTextReader::ConvertJsonToXml(const char* pText, std::size_t nLength,
                                              const CSerializationContext& context)
{
    CJsonTextReader reader(pText, nLength);
    return Convert(reader, context);
}

CBinaryData CJsonTextReader::Convert(CJsonTextReader& reader, const CSerializationContext& context)
{
    const CJsonContext& settings = context.GetJsonContext();
    CConversionStream stream;
    CXmlTextWriter writer(stream);
    CJsonReaderToXmlHandler handler(writer, settings.GetSupportRoundtrip(),
                                    reader.GetErrorPathProvider());
    reader.SetJsonReaderHandler(&handler);
    reader.m_bAllowComments = settings.GetAllowComments();
    reader.m_strRootElementName = settings.GetRootElementName();
    reader.Read();
    writer.Close();
    return stream.GetEncodedStream();
}

} // namespace QnXmlLib16
