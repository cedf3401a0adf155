#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/binding/internal/EntryRoads.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"

namespace QnXmlLib16 {

namespace {

void WriteXml(const CXmlObjectBase& object, CTextStream& stream, bool bIncludeDocHeader,
              bool bFormat, EOLType eol, const CSerializationContext& context)
{
    CXmlTextWriter writer(stream);
    writer.Open();
    writer.SetFormat(bFormat);
    writer.SetIndentChars(context.GetIndentChars().c_str());
    writer.SetEOLType(eol);
    writer.SetWriteDefaultElementValues(context.GetWriteDefaultElementValues());
    if (bIncludeDocHeader)
        writer.WriteStartDocument();
    WriteGateComment(writer);
    WriteRoot(object, writer, context);
    writer.Close();
}

} // namespace

void CXmlObjectBase::ToXmlFile(const char* pszPath, bool bIncludeDocHeader, bool bFormat,
                               XmlEncoding encoding, EOLType eol,
                               const CSerializationContext& context,
                               CompressionType compression) const
{
    RefuseZLibFile(compression);
    if (WritesFileDirectly(compression)) {
        CLicenceGate::GetGate()->Consult();
        CFileTextStream stream(pszPath, encoding);
        WriteXml(*this, stream, bIncludeDocHeader, bFormat, eol, context);
        return;
    }
    CBinaryData data = ToXmlStream(bIncludeDocHeader, bFormat, encoding, eol, context, compression);
    CFileBinaryStream(pszPath, encoding, data).ToFile();
}

std::string CXmlObjectBase::ToXml(bool bIncludeDocHeader, bool bFormat, EOLType eol,
                                  const CSerializationContext& context) const
{
    CLicenceGate::GetGate()->Consult();
    CTextStream stream;
    WriteXml(*this, stream, bIncludeDocHeader, bFormat, eol, context);
    return stream.CopyText();
}

CBinaryData CXmlObjectBase::ToXmlStream(bool bIncludeDocHeader, bool bFormat, XmlEncoding encoding,
                                        EOLType eol, const CSerializationContext& context,
                                        CompressionType compression) const
{
    CLicenceGate::GetGate()->Consult();
    CTextStream stream(encoding);
    WriteXml(*this, stream, bIncludeDocHeader, bFormat, eol, context);
    return Compressed(stream.GetEncodedStream(), compression);
}

} // namespace QnXmlLib16
