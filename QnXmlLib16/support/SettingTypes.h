#pragma once

// The enumerations that callers pass into entry operations. Their underlying type is fixed to
// int: a value outside the enumerators is a defined case with a stated failure.

namespace QnXmlLib16 {

// How the text of a stream or file becomes bytes.
enum XmlEncoding : int
{
    XmlEncoding_None = 0,  // no conversion is chosen: a stream with this value can't be encoded
    XmlEncoding_UTF8 = 1,  // UTF-8 (RFC 3629), declared as "UTF-8"
    XmlEncoding_UTF16 = 2, // one native wchar_t a character, declared as "UTF-16"
    XmlEncoding_Wide = 3   // as 2, with no encoding in the declaration
};

// The line end that writers put out.
enum EOLType : int
{
    EOLType_CRLF = 0, // carriage return and line feed
    EOLType_LF = 1    // line feed
};

// Compression of the bytes that a To... operation yields.
enum CompressionType : int
{
    CompressionType_None = 0,
    CompressionType_GZip = 1, // RFC 1952
    CompressionType_ZLib = 2  // RFC 1950; streams only, never files
};

// The kind of schema that the bound classes were made from.
enum SchemaType : int
{
    SchemaType_Default = 0,
    SchemaType_Other = 1,       // acts as SchemaType_Default
    SchemaType_NoNamespaces = 2 // names match as written, prefix included; no namespace processing
};

} // namespace QnXmlLib16
