// Reads any XML document into a CElement tree and writes the tree again.
#include "examples/common/Output.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

using namespace QnXmlLib16;

namespace {

struct CCounts
{
    size_t m_iElements = 0;
    size_t m_iAttributes = 0;
    size_t m_iCharacters = 0; // bytes of text in elements and attribute values
};

CCounts Count(CXmlElement* pRoot)
{
    CCounts counts;
    std::vector<CXmlElement*> vecOpen{pRoot};
    while (!vecOpen.empty()) {
        CXmlElement* pElement = vecOpen.back();
        vecOpen.pop_back();
        ++counts.m_iElements;
        counts.m_iCharacters += pElement->GetText().size();
        for (const CXmlAttribute* pAttribute : pElement->GetAttributes()) {
            ++counts.m_iAttributes;
            counts.m_iCharacters += pAttribute->GetValue().size();
        }
        for (CXmlElement* p = pElement->GetFirstElement(); p; p = p->GetNextSiblingElement())
            vecOpen.push_back(p);
    }
    return counts;
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
                        "Reads an XML document and writes it again, to OUTPUT or standard output.\n"
                        "A summary goes to standard error.\n%s"
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
    CSmartPtr<CElement> pRoot = new CElement("");
    CCounts counts;
    {
        CXmlDocument document(output.m_context);
        document.Load(vecPaths[0].c_str());
        pRoot->CopyXmlElement(document.GetDocumentElement());
        counts = Count(document.GetDocumentElement());
    }
    const double dRead = MilliSecondsSince(startOfRead);

    const auto startOfWrite = std::chrono::steady_clock::now();
    const CBinaryData bytes = output.ToBytes(*pRoot);
    examples::WriteBytes(vecPaths.size() > 1 ? vecPaths[1] : "", bytes, output.m_eEncoding);
    const double dWrite = MilliSecondsSince(startOfWrite);

    std::fprintf(stderr,
                 "%zu elements, %zu attributes, %zu bytes of text\n"
                 "%ju bytes in, %lu bytes out, read in %.1f ms, written in %.1f ms\n",
                 counts.m_iElements, counts.m_iAttributes, counts.m_iCharacters,
                 static_cast<uintmax_t>(std::filesystem::file_size(vecPaths[0])), bytes.GetLength(),
                 dRead, dWrite);
    return examples::kExitGood;
}

} // namespace

int main(int argc, char** argv)
{
    return examples::RunProgram("qnxmlconvert", Run, argc, argv);
}
