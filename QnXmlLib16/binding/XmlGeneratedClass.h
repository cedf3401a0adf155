#pragma once

#include "QnXmlLib16/binding/ElementTypes.h"
#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/support/QNCriticalSection.h"

namespace QnXmlLib16Data {
class CAttributeInfo;
class CElementInfo;
class CParentElementInfo;
} // namespace QnXmlLib16Data

namespace QnXmlLib16 {

class INillable;
class QnVariant;

// Base of the classes that a generator makes from a schema. A generated class holds no code to
// read or write itself: it publishes a record, a table of child elements, a table of attributes
// and one function to access its properties, and this class walks the tables in both directions.
//
// Besides the abstract operations below, a generated class provides GetBase (this object),
// GetTargetNamespace and GetNamespace of CXmlObjectBase. One whose element may be nil derives
// from INillable too.
//
// Reading replaces what the object held before; a failed read leaves what it had read so far.
// Objects inside objects nest as deep as the thread's stack allows: a document of a recursive type
// that goes deeper fails with "The elements are nested too deep for the stack." inside "Failed to
// process the element.", both CQnValidationException where they arise.
// Serialising one object from two threads is not supported, though ToXml is const: it runs
// through AccessProperty. Record and tables are shared by all instances and threads.
class QNXML_API CXmlGeneratedClass : public CXmlObjectBase
{
public:
    ~CXmlGeneratedClass() override;

protected:
    // Writes the type attribute, if the class and the context ask for it and the element does not
    // bear the type's own name, the attributes of the table, and those of pseudo children.
    // Throws CQnException "Failed to convert attributes to XML" around a CQnException from below.
    void AttributesToXml_Int(CXmlWriter* pWriter,
                             const CSerializationContext& context) const override;
    // Throws CQnValidationException "Failed to convert the element [%s] to XML" around a
    // CQnException from below.
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;
    // A CQnException from below leaves as a plain CQnException if it tells a path, else inside a
    // CQnValidationException "Failed to process the element." that tells this element's path.
    CXmlElement* FromXml_Int(CXmlElement* pElement, CXmlElement* pCursor,
                             const CSerializationContext& context, bool bOptionalChoice) override;

public:
    // With bRead true, stores the current value of the property into value, else assigns value to
    // the property. nProperty is a number of the generated class's own, as its tables tell it.
    virtual void AccessProperty(int nProperty, bool bRead, QnVariant& value) = 0;

    // The record, shared by all instances; never null.
    virtual QnXmlLib16Data::CParentElementInfo* GetClassInfo() const = 0;
    // Child elements in schema order, ended by a null entry; never null itself.
    virtual QnXmlLib16Data::CElementInfo** GetClassElementInfo() const = 0;
    // Attributes, ended by a null entry; never null itself.
    virtual QnXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const = 0;

    // Puts the object back to what it was when constructed. Called at the start of each read.
    virtual void Init() = 0;

    // The steps of reading and writing. Those that read an element take the element that this
    // object stands for and the first child not taken yet, and return the first child that they
    // did not take, null when none is left. All failures are CQnValidationException with the path
    // of the element or attribute, save where an operation of the metadata says otherwise.

    // Offers each attribute of pElement to the table; the first entry that takes it wins. Namespace
    // declarations and the attributes of the XML Schema instance namespace are no data; nil goes
    // to INillable. An attribute that nobody takes fails if bStrict is true and the context does
    // not ignore it.
    void ProcessAttributesFromXml(const CSerializationContext& context, CXmlElement* pElement,
                                  bool bStrict);
    void ProcessAttributesToXml(const CSerializationContext& context,
                                QnXmlLib16Data::CElementInfo** ppElements,
                                QnXmlLib16Data::CAttributeInfo** ppAttributes,
                                CXmlWriter* pWriter) const;

    // Reads the entries of the table in their order. Where the object has no element of its own,
    // an entry that does not match undoes the whole group: the cursor comes back as it was given,
    // while properties that were set stay set.
    CXmlElement* ProcessElementSeqFromXml(const CSerializationContext& context,
                                          CXmlElement* pElement, CXmlElement* pCursor,
                                          XmlElementType elementType);
    void ProcessElementSeqToXml(const CSerializationContext& context,
                                QnXmlLib16Data::CElementInfo** ppElements,
                                CXmlWriter* pWriter) const;

    // Reads the first entry of the table that matches. In an element of its own a second child is
    // a failure.
    CXmlElement* ProcessElementChoiceFromXml(const CSerializationContext& context,
                                             CXmlElement* pElement, CXmlElement* pCursor,
                                             XmlElementType elementType, bool bOptionalChoice);
    // Writes the first entry of the table that has something to write.
    void ProcessElementChoiceToXml(const CSerializationContext& context,
                                   QnXmlLib16Data::CElementInfo** ppElements, CXmlWriter* pWriter,
                                   bool bOptionalChoice) const;

    // Reads the entries of the table in the order of the document, then asks each one whether it
    // may be absent. Writing goes by the table.
    CXmlElement* ProcessElementAllFromXml(const CSerializationContext& context,
                                          CXmlElement* pElement, CXmlElement* pCursor,
                                          XmlElementType elementType);
    void ProcessElementAllToXml(const CSerializationContext& context,
                                QnXmlLib16Data::CElementInfo** ppElements,
                                CXmlWriter* pWriter) const;

    // Whether any entry of the element table goes by the name of pElement.
    bool IsElementInList(const CSerializationContext& context, CXmlElement* pElement) const;
    int GetClassElementInfoCount() const;
    // Whether the table has a choice member that may be absent: an optional one, or a collection
    // that may be empty. Collections are read out of their properties to tell.
    bool DoesElementContainOptionalElements() const;
    void ReadProperty(int nProperty, QnVariant& value) const;

    // Destroys record and tables, entry by entry, and sets the pointers to null. Null pointers are
    // passed over.
    static void CleanMetaData(QnXmlLib16Data::CParentElementInfo*& pInfo,
                              QnXmlLib16Data::CElementInfo**& ppElements,
                              QnXmlLib16Data::CAttributeInfo**& ppAttributes);

    // Taken by generated code while it builds its record and tables, never by the library.
    static CQNCriticalSection m_csInit;

protected:
    CXmlGeneratedClass();

private:
    INillable* FindNillable(const QnXmlLib16Data::CParentElementInfo& info);
    void WriteRootDeclarations(CXmlWriter& writer, const CSerializationContext& context) const;
};

} // namespace QnXmlLib16
