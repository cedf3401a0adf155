#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/binding/internal/EntryRoads.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonTextWriter.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"

namespace QnXmlLib16 {

namespace {

void WriteJson(const CXmlObjectBase& object, CTextStream& stream, bool bFormat, EOLType eol,
               const CSerializationContext& context)
{
    CJsonTextWriter writer(stream);
    writer.Open();
    writer.SetFormat(bFormat);
    writer.SetIndentChars(context.GetIndentChars().c_str());
    writer.SetEOLType(eol);
    writer.SetSupportRoundtrip(context.GetJsonContext().GetSupportRoundtrip());
    writer.WriteStartDocument();
    WriteGateComment(writer);
    WriteRoot(object, writer, context);
    writer.WriteEndDocument();
    writer.Close();
}

[[noreturn]] void ThrowNoJsonInput()
{
    throw CQnInvalidStateException("JSON input is not available.");
}

} // namespace

void CXmlObjectBase::ToFastInfosetFile(const char* pszPath, FInfoDecl declaration,
                                       const CSerializationContext& context,
                                       CompressionType compression) const
{
    RefuseZLibFile(compression);
    CBinaryData data = ToFastInfosetStream(declaration, context, compression);
    CFileBinaryStream(pszPath, XmlEncoding_None, data).ToFile();
}

CBinaryData CXmlObjectBase::ToFastInfosetStream(FInfoDecl declaration,
                                                const CSerializationContext& context,
                                                CompressionType compression) const
{
    CLicenceGate::GetGate()->Consult();
    CBinaryStream stream;
    CFastInfosetWriter writer(context.GetFIContext(), stream);
    writer.Open();
    writer.WriteStartDocument(declaration);
    WriteRoot(*this, writer, context);
    writer.WriteEndDocument();
    writer.Close();
    return Compressed(stream.GetBinaryStream(), compression);
}

std::string CXmlObjectBase::ToJson(bool bFormat, EOLType eol,
                                   const CSerializationContext& context) const
{
    CLicenceGate::GetGate()->Consult();
    CTextStream stream;
    WriteJson(*this, stream, bFormat, eol, context);
    return stream.GetText();
}

CBinaryData CXmlObjectBase::ToJsonStream(bool bFormat, XmlEncoding encoding, EOLType eol,
                                         const CSerializationContext& context,
                                         CompressionType compression) const
{
    CLicenceGate::GetGate()->Consult();
    CTextStream stream(encoding);
    WriteJson(*this, stream, bFormat, eol, context);
    return Compressed(stream.GetEncodedStream(), compression);
}

void CXmlObjectBase::ToJsonFile(const char* pszPath, bool bFormat, XmlEncoding encoding,
                                EOLType eol, const CSerializationContext& context,
                                CompressionType compression) const
{
    RefuseZLibFile(compression);
    if (WritesFileDirectly(compression)) {
        CLicenceGate::GetGate()->Consult();
        CFileTextStream stream(pszPath, encoding);
        WriteJson(*this, stream, bFormat, eol, context);
        return;
    }
    CBinaryData data = ToJsonStream(bFormat, encoding, eol, context, compression);
    // Deliberate: no byte order mark in a JSON file, whatever its encoding. Pinned by
    // WritingFiles.OnlyXmlTextGetsTheMarkOfItsEncoding.
    CFileBinaryStream(pszPath, XmlEncoding_UTF8, data).ToFile();
}

void CXmlObjectBase::FromJsonFile(const char*, const CSerializationContext&)
{
    CLicenceGate::GetGate()->Consult();
    ThrowNoJsonInput();
}

void CXmlObjectBase::FromJson(const char*, const CSerializationContext&)
{
    CLicenceGate::GetGate()->Consult();
    ThrowNoJsonInput();
}

void CXmlObjectBase::FromJson(const wchar_t*, const CSerializationContext&)
{
    CLicenceGate::GetGate()->Consult();
    ThrowNoJsonInput();
}

void CXmlObjectBase::FromJsonStream(unsigned char*, unsigned long, const CSerializationContext&)
{
    CLicenceGate::GetGate()->Consult();
    ThrowNoJsonInput();
}

void CXmlObjectBase::FromJsonStream(const CBinaryData& data, const CSerializationContext& context)
{
    FromJsonStream(data.GetData(), data.GetLength(), context);
}

} // namespace QnXmlLib16
