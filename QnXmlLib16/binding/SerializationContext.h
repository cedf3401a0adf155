#pragma once

#include "QnXmlLib16/binding/NamespaceAliasMap.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <memory>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CAttributeCol;
class CFastInfosetContext;
class CJsonContext;

// The caller's settings for reading and writing, passed by reference to every operation.
// One context belongs to one thread at a time, const operations included: some of them make their
// object on first use, each write of a root element makes the additional attributes, and a read
// from JSON sets IgnoreNamespaces for its duration. Sharing one between threads is safe once
// GetFIContext, GetJsonContext and GetAdditionalRootAttributes have been called and as long as no
// JSON is read.
class QNXML_API CSerializationContext
{
public:
    CSerializationContext();
    // The Fast Infoset and JSON settings are copied deeply. The additional root attributes are
    // shared: what one context adds, the other one writes too.
    CSerializationContext(const CSerializationContext& other);
    CSerializationContext& operator=(const CSerializationContext& other);
    virtual ~CSerializationContext();

    // The process-wide default. It is a context like any other: what is changed in it holds for
    // all who pass it.
    static CSerializationContext m_defaultContext;

    // Relaxations for reading; all false by default.

    bool GetIgnoreUnknownAttributes() const { return m_settings.m_bIgnoreUnknownAttributes; }
    void SetIgnoreUnknownAttributes(bool bValue) { m_settings.m_bIgnoreUnknownAttributes = bValue; }

    // Skips elements that the metadata doesn't know. Excludes IgnoreMissingMandatoryElements:
    // setting one of the two to true while the other is true throws CQnInvalidStateException and
    // changes nothing.
    bool GetIgnoreUnknownElements() const { return m_settings.m_bIgnoreUnknownElements; }
    void SetIgnoreUnknownElements(bool bValue);

    // Lets mandatory elements of a sequence be absent.
    bool GetIgnoreMissingMandatoryElements() const
    {
        return m_settings.m_bIgnoreMissingMandatoryElements;
    }
    void SetIgnoreMissingMandatoryElements(bool bValue);

    // Lets a choice be empty, on writing too.
    bool GetIgnoreMissingChoice() const { return m_settings.m_bIgnoreMissingChoice; }
    void SetIgnoreMissingChoice(bool bValue) { m_settings.m_bIgnoreMissingChoice = bValue; }

    // Lets a collection hold fewer or more items than its bounds say, on writing too.
    bool GetIgnoreInvalidCollectionCounts() const
    {
        return m_settings.m_bIgnoreInvalidCollectionCounts;
    }
    void SetIgnoreInvalidCollectionCounts(bool bValue)
    {
        m_settings.m_bIgnoreInvalidCollectionCounts = bValue;
    }

    // Lets names match on the local name alone. Always true with SchemaType_NoNamespaces, whatever
    // was set.
    bool GetIgnoreNamespaces() const
    {
        return m_settings.m_bIgnoreNamespaces || m_settings.m_schemaType == SchemaType_NoNamespaces;
    }
    void SetIgnoreNamespaces(bool bValue) { m_settings.m_bIgnoreNamespaces = bValue; }

    // The kind of schema behind the classes.
    SchemaType GetSchemaType() const { return m_settings.m_schemaType; }
    void SetSchemaType(SchemaType type) { m_settings.m_schemaType = type; }

    // Whether the loader takes CDATA sections as plain text; true by default.
    bool GetStripCDATA() const { return m_settings.m_bStripCDATA; }
    void SetStripCDATA(bool bValue) { m_settings.m_bStripCDATA = bValue; }

    // Options for writing.

    // Leaves out optional attributes that equal their default; false by default.
    bool GetNoOptionalAttributeDefaultOutput() const
    {
        return m_settings.m_bNoOptionalAttributeDefaultOutput;
    }
    void SetNoOptionalAttributeDefaultOutput(bool bValue)
    {
        m_settings.m_bNoOptionalAttributeDefaultOutput = bValue;
    }

    // Handed to the XML text writer, which leaves out texts that equal the element's default
    // while it is false, as it is by default.
    bool GetWriteDefaultElementValues() const { return m_settings.m_bWriteDefaultElementValues; }
    void SetWriteDefaultElementValues(bool bValue)
    {
        m_settings.m_bWriteDefaultElementValues = bValue;
    }

    // Whether classes that allow it write the type attribute of the XML Schema instance
    // namespace; true by default.
    bool GetWriteTypeAttribute() const { return m_settings.m_bWriteTypeAttribute; }
    void SetWriteTypeAttribute(bool bValue) { m_settings.m_bWriteTypeAttribute = bValue; }

    // Declared as default namespace on the root element; empty for none.
    std::string GetDefaultNamespaceURI() const { return m_settings.m_strDefaultNamespaceURI; }
    void SetDefaultNamespaceURI(const char* pszURI);

    // Raw text for the start tag of the root element; empty for none.
    std::string GetInLineSchema() const { return m_settings.m_strInLineSchema; }
    void SetInLineSchema(const char* pszSchema);

    // The unit of indentation of formatted output, tabs and blanks only; a single tab by default.
    // Null counts as empty. Throws CQnInvalidParamException for any other character and keeps the
    // old value.
    std::string GetIndentChars() const { return m_settings.m_strIndentChars; }
    void SetIndentChars(const char* pszValue);

    // Settings of the single formats, made with their defaults on first use and owned by this
    // context.
    CFastInfosetContext& GetFIContext() const;
    CJsonContext& GetJsonContext() const;

    // The prefixes declared on the root element, in the order of their namespaces.
    const CNamespaceAliasMap& GetNamespaceAliases() const { return m_settings.m_namespaceAliases; }
    CNamespaceAliasMap& GetNamespaceAliases() { return m_settings.m_namespaceAliases; }

    // Attributes added to the root element, of any namespace; made empty on first use.
    CSmartPtr<CAttributeCol> GetAdditionalRootAttributes() const;

    // Complete processing instructions, written ahead of the root element in this order.
    const std::vector<std::string>& GetProcessingInstructions() const
    {
        return m_settings.m_processingInstructions;
    }
    std::vector<std::string>& GetProcessingInstructions()
    {
        return m_settings.m_processingInstructions;
    }

private:
    // All that copying takes over field by field.
    struct Settings
    {
        std::string m_strDefaultNamespaceURI;
        bool m_bWriteTypeAttribute = true;
        CNamespaceAliasMap m_namespaceAliases;
        // Null until first used.
        mutable CSmartPtr<CAttributeCol> m_additionalRootAttributes;
        std::vector<std::string> m_processingInstructions;
        std::string m_strInLineSchema;
        bool m_bIgnoreInvalidCollectionCounts = false;
        bool m_bIgnoreMissingChoice = false;
        // Invariant: the next two are not both true.
        bool m_bIgnoreMissingMandatoryElements = false;
        bool m_bIgnoreUnknownElements = false;
        bool m_bIgnoreUnknownAttributes = false;
        // Mutable, since a read from JSON sets it in a context that it receives as const.
        mutable bool m_bIgnoreNamespaces = false;
        SchemaType m_schemaType = SchemaType_Default;
        bool m_bNoOptionalAttributeDefaultOutput = false;
        bool m_bWriteDefaultElementValues = false;
        bool m_bStripCDATA = true;
        std::string m_strIndentChars = "\t";
    };

    // Null until first used.
    mutable std::unique_ptr<CFastInfosetContext> m_pFIContext;
    mutable std::unique_ptr<CJsonContext> m_pJsonContext;
    Settings m_settings;
};

} // namespace QnXmlLib16
