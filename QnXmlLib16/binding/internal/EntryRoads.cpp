#include "QnXmlLib16/binding/internal/EntryRoads.h"

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/licensing/LicenceGate.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/QnZip.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlWriter.h"

namespace QnXmlLib16 {

namespace {

// Plain and unguarded: set before any work starts.
bool ASYNC_TOXMLFILE = false;

} // namespace

void AsyncToXmlFile(bool bEnable)
{
    ASYNC_TOXMLFILE = bEnable;
}

void AsyncFromXmlFile(bool) {}

void WriteGateComment(CXmlWriter& writer)
{
    const std::string strComment = CLicenceGate::GetGate()->GetHeaderComment();
    if (!strComment.empty())
        writer.WriteComment(strComment);
}

void WriteRoot(const CXmlObjectBase& object, CXmlWriter& writer,
               const CSerializationContext& context)
{
    const std::string strTargetNamespace = object.GetTargetNamespace();
    CXmlObjectBase::ToXml_Int(&object, &writer, true, strTargetNamespace.c_str(), context, false);
}

CBinaryData Compressed(CBinaryData data, CompressionType compression)
{
    if (compression != CompressionType_None)
        CQnZip::CompressData(data, compression);
    return data;
}

void RefuseZLibFile(CompressionType compression)
{
    if (compression == CompressionType_ZLib)
        throw CQnException("ZLIB Compression only available for To Stream methods.");
}

bool WritesFileDirectly(CompressionType compression)
{
    return ASYNC_TOXMLFILE && compression == CompressionType_None;
}

} // namespace QnXmlLib16
