#include "QnXmlLib16/json/JsonTextReader.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonReaderToXmlHandler.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

namespace QnXmlLib16 {

CBinaryData CJsonTextReader::ConvertJsonToXml(const std::string& strText,
                                              const CSerializationContext& context)
{
    const CJsonContext& settings = context.GetJsonContext();
    CTextStream stream(XmlEncoding_UTF8);
    CXmlTextWriter writer(stream);
    CJsonTextReader reader(strText);
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
