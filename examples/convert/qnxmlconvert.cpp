// Reads any XML document into a CElement tree and writes the tree again.
#include "examples/common/Output.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>
#include <vector>

using namespace QnXmlLib16;

namespace {

// A document without generated classes. Like a bound root it declares the context's namespaces.
class CRootElement : public CElement
{
public:
    CRootElement() : CElement("") {}

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override
    {
        if (bIsRoot) {
            const CNamespaceAliasMap& aliases = context.GetNamespaceAliases();
            for (int i = 0; i < aliases.GetNamespaceCount(); ++i) {
                const std::string strNamespace = aliases.GetNamespaceAt(i);
                pWriter->AddNamespace(aliases.GetAliasFromNamespace(strNamespace.c_str()),
                                      strNamespace);
            }
            pWriter->SetDefaultNamespace(context.GetDefaultNamespaceURI());
        }
        CElement::ToXml_Int(pWriter, bIsRoot, pszTargetNamespace, context, bOptionalChoice);
    }
};

// What one walk over a document finds.
struct CSurvey
{
    size_t m_iElements = 0;
    size_t m_iAttributes = 0;
    size_t m_iCharacters = 0; // of text in elements and attribute values
    std::set<std::string> m_setElementNamespaces;
    std::set<std::string> m_setAttributeNamespaces;
};

// The text is UTF-8: each character has one byte that continues no other.
size_t CountCharacters(const std::string& strText)
{
    return static_cast<size_t>(
        std::count_if(strText.begin(), strText.end(), [](char ch) { return (ch & 0xC0) != 0x80; }));
}

CSurvey Survey(CXmlElement* pRoot)
{
    CSurvey survey;
    std::vector<CXmlElement*> vecOpen{pRoot};
    while (!vecOpen.empty()) {
        CXmlElement* pElement = vecOpen.back();
        vecOpen.pop_back();
        ++survey.m_iElements;
        survey.m_iCharacters += CountCharacters(pElement->GetText());
        survey.m_setElementNamespaces.insert(pElement->GetNamespaceURI());
        for (const CXmlAttribute* pAttribute : pElement->GetAttributes()) {
            ++survey.m_iAttributes;
            survey.m_iCharacters += CountCharacters(pAttribute->GetValue());
            survey.m_setAttributeNamespaces.insert(pAttribute->GetNamespaceURI());
        }
        for (CXmlElement* p = pElement->GetFirstElement(); p; p = p->GetNextSiblingElement())
            vecOpen.push_back(p);
    }
    return survey;
}

// Lets the output use the prefixes of the input. An unprefixed element would fall into a default
// namespace, so there is one only where every element is in a namespace.
void TakePrefixes(const CXmlDocument& document, const CSurvey& survey,
                  CSerializationContext& context)
{
    std::set<std::string> setNamespaces = survey.m_setElementNamespaces;
    setNamespaces.insert(survey.m_setAttributeNamespaces.begin(),
                         survey.m_setAttributeNamespaces.end());
    for (const std::string& strNamespace : setNamespaces) {
        const std::string strPrefix = document.LookupAliasFromNamespace(strNamespace.c_str());
        const bool bFound = document.LookupNamespaceFromAlias(strPrefix.c_str()) == strNamespace;
        if (strNamespace.empty() || !bFound)
            continue;
        if (!strPrefix.empty())
            context.GetNamespaceAliases().Add(strPrefix.c_str(), strNamespace.c_str());
        else if (survey.m_setElementNamespaces.count("") == 0)
            context.SetDefaultNamespaceURI(strNamespace.c_str());
    }
}

// Takes away the white space between elements. Pretty printing puts its own there, and JSON and
// Fast Infoset have no place for text behind a child.
void DropIndentation(CElement& root)
{
    std::vector<CElement*> vecOpen{&root};
    while (!vecOpen.empty()) {
        CElement* pElement = vecOpen.back();
        vecOpen.pop_back();
        if (!pElement->GetElements()->GetCount())
            continue;
        if (pElement->GetText().find_first_not_of(" \t\r\n") == std::string::npos)
            pElement->SetText("");
        for (CNode* pNode = pElement->GetElements()->begin(); pNode; pNode = pNode->GetNext())
            vecOpen.push_back(static_cast<CElement*>(pNode->GetItem()));
    }
}

// Fills the tree from a file of any form; JSON goes by way of XML text.
void Load(const std::string& strPath, CXmlDocument& document)
{
    if (!examples::HoldsJson(strPath))
        return document.Load(strPath.c_str());
    const CBinaryData xml = document.LoadJsonFile(strPath.c_str());
    document.LoadXmlStream(xml.GetData(), xml.GetLength());
}

double MilliSecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

int Run(int argc, char** argv)
{
    examples::COutput output;
    std::vector<std::string> vecPaths;
    for (int i = 1; i < argc; ++i) {
        const std::string strName = argv[i];
        bool bUsed = false;
        if (strName == "--help") {
            std::printf("usage: qnxmlconvert [options] INPUT [OUTPUT]\n"
                        "Reads a document in XML text, JSON or Fast Infoset, plain or compressed,\n"
                        "and writes it to OUTPUT or standard output. A summary goes to standard\n"
                        "error.\n%s"
                        "Exit: 0 good, 1 bad input or a failed write, 2 wrong usage.\n",
                        examples::COutput::Help());
            return examples::kExitGood;
        }
        if (output.TakeOption(strName, i + 1 < argc ? argv[i + 1] : nullptr, bUsed))
            i += bUsed ? 1 : 0;
        else if (strName.size() > 1 && strName[0] == '-')
            throw examples::CUsageError("unknown option " + strName);
        else
            vecPaths.push_back(strName);
    }
    if (vecPaths.empty() || vecPaths.size() > 2)
        throw examples::CUsageError("one INPUT and at most one OUTPUT, please");

    const auto startOfRead = std::chrono::steady_clock::now();
    CSmartPtr<CRootElement> pRoot = new CRootElement;
    CSurvey survey;
    {
        CXmlDocument document(output.m_context);
        Load(vecPaths[0], document);
        pRoot->CopyXmlElement(document.GetDocumentElement());
        survey = Survey(document.GetDocumentElement());
        TakePrefixes(document, survey, output.m_context);
    }
    if (output.m_bFormat || output.m_eForm != examples::Form::Xml)
        DropIndentation(*pRoot);
    const double dRead = MilliSecondsSince(startOfRead);

    const auto startOfWrite = std::chrono::steady_clock::now();
    const CBinaryData bytes = output.ToBytes(*pRoot);
    output.Write(vecPaths.size() > 1 ? vecPaths[1] : "", bytes);
    const double dWrite = MilliSecondsSince(startOfWrite);

    std::fprintf(stderr,
                 "%zu elements, %zu attributes, %zu characters\n"
                 "%ju bytes in, %lu bytes out, read in %.1f ms, written in %.1f ms\n",
                 survey.m_iElements, survey.m_iAttributes, survey.m_iCharacters,
                 static_cast<uintmax_t>(std::filesystem::file_size(vecPaths[0])), bytes.GetLength(),
                 dRead, dWrite);
    return examples::kExitGood;
}

} // namespace

int main(int argc, char** argv)
{
    return examples::RunProgram("qnxmlconvert", Run, argc, argv);
}
