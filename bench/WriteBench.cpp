// Writing XML text against Expat with empty handlers on the document that the calls come from.
// The calls are recorded beforehand, in the order in which a tree makes them: attributes,
// children, then text, each name in its namespace and none declared for the document.

#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"
#include "bench/BenchDocuments.h"
#include "bench/BenchTiming.h"

#include <deque>

#include <benchmark/benchmark.h>

namespace {

using namespace QnXmlLib16;

struct SCall
{
    enum EKind
    {
        kStart,
        kAttribute,
        kText,
        kEnd
    };
    EKind eKind;
    std::string strName;
    std::string strNamespace;
    std::string strValue;
};

class CRecorder
{
public:
    explicit CRecorder(const std::string& strXml)
    {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> pParser(
            XML_ParserCreateNS(nullptr, '|'), XML_ParserFree);
        XML_SetUserData(pParser.get(), this);
        XML_SetElementHandler(pParser.get(), &OnStart, &OnEnd);
        XML_SetCharacterDataHandler(pParser.get(), &OnText);
        XML_Parse(pParser.get(), strXml.data(), static_cast<int>(strXml.size()), 1);
    }

    const std::deque<SCall>& GetCalls() const { return m_calls; }

private:
    static SCall MakeCall(SCall::EKind eKind, const std::string& strName, const char* pszValue)
    {
        const std::size_t uBar = strName.find('|');
        if (uBar == std::string::npos)
            return {eKind, strName, "", pszValue};
        return {eKind, strName.substr(uBar + 1), strName.substr(0, uBar), pszValue};
    }

    static void OnStart(void* pUser, const char* pszName, const char** ppszAttributes)
    {
        auto& self = *static_cast<CRecorder*>(pUser);
        self.m_texts.emplace_back();
        self.m_calls.push_back(MakeCall(SCall::kStart, pszName, ""));
        for (; *ppszAttributes; ppszAttributes += 2)
            self.m_calls.push_back(
                MakeCall(SCall::kAttribute, ppszAttributes[0], ppszAttributes[1]));
    }
    static void OnText(void* pUser, const char* pText, int iLength)
    {
        static_cast<CRecorder*>(pUser)->m_texts.back().append(pText, static_cast<size_t>(iLength));
    }
    static void OnEnd(void* pUser, const char*)
    {
        auto& self = *static_cast<CRecorder*>(pUser);
        self.m_calls.push_back({SCall::kText, "", "", self.m_texts.back()});
        self.m_calls.push_back({SCall::kEnd, "", "", ""});
        self.m_texts.pop_back();
    }

    std::deque<SCall> m_calls;
    std::vector<std::string> m_texts;
};

void Replay(const std::deque<SCall>& calls, CXmlTextWriter& writer)
{
    for (const SCall& call : calls) {
        switch (call.eKind) {
        case SCall::kStart:
            writer.WriteStartElement(call.strName, call.strNamespace);
            break;
        case SCall::kAttribute:
            writer.WriteAttributeString(call.strName, call.strNamespace, call.strValue, it_string);
            break;
        case SCall::kText:
            writer.WriteString(call.strValue, it_string, false);
            break;
        case SCall::kEnd:
            writer.WriteEndElement();
            break;
        }
    }
}

void WriteCalls(benchmark::State& state, const CBenchDocument& input)
{
    const CRecorder recorder(input.strXml);
    std::vector<double> vecExpat;
    std::vector<double> vecWrite;
    unsigned long ulLength = 0;
    for (auto _ : state) {
        const CStopwatch expat;
        if (!ParseWithEmptyHandlers(input.strXml.data(), input.strXml.size()))
            state.SkipWithError("Expat refuses the document");
        vecExpat.push_back(expat.Seconds());

        const CStopwatch write;
        CTextStream stream(XmlEncoding_UTF8);
        CXmlTextWriter writer(stream);
        writer.SetFormat(false);
        Replay(recorder.GetCalls(), writer);
        ulLength = stream.GetLength();
        vecWrite.push_back(write.Seconds());
        state.SetIterationTime(vecWrite.back());
    }
    state.counters["MB"] = static_cast<double>(ulLength) / 1e6;
    state.counters["expat_ms"] = Median(vecExpat) * 1e3;
    state.counters["write_to_expat"] = Median(vecWrite) / Median(vecExpat);
}

[[maybe_unused]] const bool bRegistered = [] {
    for (const CBenchDocument& document : GetBenchDocuments())
        benchmark::RegisterBenchmark(("WriteCalls/" + document.strName).c_str(), WriteCalls,
                                     document)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
