#pragma once

#include "QnXmlLib16/support/SettingTypes.h"

namespace QnXmlLib16 {

class CBinaryData;
class CSerializationContext;
class CXmlObjectBase;
class CXmlWriter;

// The steps that the To... operations of all formats share.

// The comment that the licence gate asks for, if any.
void WriteGateComment(CXmlWriter& writer);

// The object as the root of the document. The writer is set up and open.
void WriteRoot(const CXmlObjectBase& object, CXmlWriter& writer,
               const CSerializationContext& context);

CBinaryData Compressed(CBinaryData data, CompressionType compression);

// Throws CQnException for CompressionType_ZLib, which files don't take.
void RefuseZLibFile(CompressionType compression);

// Whether text goes into its file while it is made; see AsyncToXmlFile().
bool WritesFileDirectly(CompressionType compression);

} // namespace QnXmlLib16
