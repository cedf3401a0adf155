#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/binding/internal/EntryRoads.h"
#include "QnXmlLib16/binding/internal/Input.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/json/JsonTextWriter.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
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

// Sets IgnoreNamespaces of the caller's context for the time of one read from JSON, which has no
// namespaces to go by unless it was written with full round trip support.
class CIgnoreNamespaces
{
public:
    explicit CIgnoreNamespaces(const CSerializationContext& context)
        : m_context(const_cast<CSerializationContext&>(context)),
          m_bBefore(context.GetIgnoreNamespaces())
    {
        if (!HasNamespaces())
            m_context.SetIgnoreNamespaces(true);
    }
    CIgnoreNamespaces(const CIgnoreNamespaces&) = delete;
    CIgnoreNamespaces& operator=(const CIgnoreNamespaces&) = delete;
    // Deliberate: asks for the round trip value again, so a class that changes it while it is read
    // leaves the flag as it is then. Pinned by
    // ReadingJson.TheFlagStaysWhereTheRoundTripValueChangesMeanwhile.
    ~CIgnoreNamespaces()
    {
        if (!HasNamespaces())
            m_context.SetIgnoreNamespaces(m_bBefore);
    }

private:
    bool HasNamespaces() const
    {
        return m_context.GetJsonContext().GetSupportRoundtrip() == JsonRoundTrip_Full;
    }

    CSerializationContext& m_context;
    const bool m_bBefore;
};

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
    return stream.CopyText();
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
    // WritingText.EncodesItAndMarksOnlyXmlFiles.
    CFileBinaryStream(pszPath, XmlEncoding_UTF8, data).ToFile();
}

void CXmlObjectBase::FromJsonFile(const char* pszPath, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CXmlDocument document(context);
    FromJson_Int(document.LoadJsonFile(pszPath), context);
}

void CXmlObjectBase::FromJson(const char* pszJson, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    FromJson_Int(CInput(context).LoadJsonInPlace(pszJson), context);
}

void CXmlObjectBase::FromJson(const wchar_t* pszJson, const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CXmlDocument document(context);
    FromJson_Int(document.LoadJson(pszJson), context);
}

void CXmlObjectBase::FromJsonStream(unsigned char* pData, unsigned long nLength,
                                    const CSerializationContext& context)
{
    CLicenceGate::GetGate()->Consult();
    CXmlDocument document(context);
    FromJson_Int(document.LoadJsonStream(pData, nLength), context);
}

void CXmlObjectBase::FromJsonStream(const CBinaryData& data, const CSerializationContext& context)
{
    FromJsonStream(data.GetData(), data.GetLength(), context);
}

void CXmlObjectBase::FromJson_Int(const CBinaryData& xml, const CSerializationContext& context)
{
    const CIgnoreNamespaces scope(context);
    try {
        FromXmlStream(xml, context);
    }
    catch (const CQnException& e) {
        const std::string strXml(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength());
        throw CQnException(FormatString("Error converting JSON to XML:\n%s", strXml.c_str()), e);
    }
}

} // namespace QnXmlLib16
