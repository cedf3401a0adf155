// Fast Infoset against XML text on the same trees: reading bytes into a tree, and writing a tree.
// Both sides run in turn in every iteration, so that the ratios hold whatever else the machine
// does. Plain: every value as text. Suggested: the numbers and dates of the track in encodings of
// their own.

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"
#include "bench/BenchDocuments.h"
#include "bench/BenchTiming.h"

#include <cstdio>

#include <benchmark/benchmark.h>

namespace {

using namespace QnXmlLib16;

// A track of so many points, each with a height and a time.
std::string MakeTrack(unsigned int uPoints)
{
    std::string strXml = "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"bench\" "
                         "xmlns=\"http://www.topografix.com/GPX/1/1\"><trk><trkseg>";
    for (unsigned int u = 0; u < uPoints; ++u) {
        char acPoint[256];
        std::snprintf(acPoint, sizeof acPoint,
                      "<trkpt lat=\"%.7f\" lon=\"%.7f\"><ele>%.1f</ele>"
                      "<time>2024-05-%02uT%02u:%02u:%02uZ</time></trkpt>",
                      47 + u * 1.23e-5, 8 + u * 2.71e-5, 400 + u % 977 * 0.1, 1 + u / 86400,
                      u / 3600 % 24, u / 60 % 60, u % 60);
        strXml += acPoint;
    }
    return strXml += "</trkseg></trk></gpx>";
}

ItemType TypeOf(const std::string& strName)
{
    if (strName == "lat" || strName == "lon" || strName == "ele")
        return it_decimal;
    return strName == "time" ? it_datetime : it_string;
}

// One call of a writer. The texts are those of the tree.
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
    const std::string* pName;
    const std::string* pNamespace;
    const std::string* pValue;
    ItemType eType;
};

void AddCalls(const CXmlElement& element, std::vector<SCall>& vecCalls)
{
    const std::string& strName = element.GetLocalName();
    vecCalls.push_back({SCall::kStart, &strName, &element.GetNamespaceURI(), nullptr, it_none});
    for (const CXmlAttribute* pAttribute : element.GetAttributes())
        vecCalls.push_back({SCall::kAttribute, &pAttribute->GetLocalName(),
                            &pAttribute->GetNamespaceURI(), &pAttribute->GetValue(),
                            TypeOf(pAttribute->GetLocalName())});
    vecCalls.push_back({SCall::kText, nullptr, nullptr, &element.GetText(), TypeOf(strName)});
    for (const CXmlElement* p = element.GetFirstElement(); p; p = p->GetNextSiblingElement())
        AddCalls(*p, vecCalls);
    vecCalls.push_back({SCall::kEnd, nullptr, nullptr, nullptr, it_none});
}

void Replay(const std::vector<SCall>& vecCalls, CXmlWriter& writer)
{
    writer.SetDefaultNamespace(*vecCalls.front().pNamespace);
    for (const SCall& call : vecCalls) {
        switch (call.eKind) {
        case SCall::kStart:
            writer.WriteStartElement(*call.pName, *call.pNamespace);
            break;
        case SCall::kAttribute:
            writer.WriteAttributeString(*call.pName, *call.pNamespace, *call.pValue, call.eType);
            break;
        case SCall::kText:
            writer.WriteString(*call.pValue, call.eType, false);
            break;
        case SCall::kEnd:
            writer.WriteEndElement();
            break;
        }
    }
}

CBinaryData WriteFastInfoset(const std::vector<SCall>& vecCalls, const CFastInfosetContext& context)
{
    CBinaryStream stream;
    CFastInfosetWriter writer(context, stream);
    writer.Open();
    writer.WriteStartDocument(FInfoDecl_None);
    Replay(vecCalls, writer);
    writer.WriteEndDocument();
    writer.Close();
    return stream.GetBinaryStream();
}

CBinaryData WriteText(const std::vector<SCall>& vecCalls)
{
    CTextStream stream(XmlEncoding_UTF8);
    CXmlTextWriter writer(stream);
    writer.Open();
    writer.SetFormat(false);
    Replay(vecCalls, writer);
    writer.Close();
    return stream.GetEncodedStream();
}

void Compare(benchmark::State& state, const CBenchDocument& input, bool bSuggested)
{
    CXmlDocument source;
    source.LoadXml(input.strXml.c_str());
    std::vector<SCall> vecCalls;
    AddCalls(*source.GetDocumentElement(), vecCalls);
    CSerializationContext settings;
    CFastInfosetContext& context = settings.GetFIContext();
    if (bSuggested)
        context.SetSuggestedValues();

    const CBinaryData text = WriteText(vecCalls);
    const CBinaryData binary = WriteFastInfoset(vecCalls, context);
    std::vector<double> vecTimes[4];
    for (auto _ : state) {
        const CStopwatch textWriting;
        WriteText(vecCalls);
        vecTimes[0].push_back(textWriting.Seconds());

        const CStopwatch binaryWriting;
        WriteFastInfoset(vecCalls, context);
        vecTimes[1].push_back(binaryWriting.Seconds());

        const CStopwatch textReading;
        {
            CXmlDocument document(settings);
            document.LoadXmlStream(text.GetData(), text.GetLength());
        }
        vecTimes[2].push_back(textReading.Seconds());

        const CStopwatch binaryReading;
        {
            CXmlDocument document(settings);
            document.LoadXmlStream(binary.GetData(), binary.GetLength());
        }
        vecTimes[3].push_back(binaryReading.Seconds());
        state.SetIterationTime(vecTimes[3].back());
    }
    state.counters["text_MB"] = static_cast<double>(text.GetLength()) / 1e6;
    state.counters["size_to_text"] =
        static_cast<double>(binary.GetLength()) / static_cast<double>(text.GetLength());
    state.counters["write_ms"] = Median(vecTimes[1]) * 1e3;
    state.counters["write_to_text"] = Median(vecTimes[1]) / Median(vecTimes[0]);
    state.counters["read_ms"] = Median(vecTimes[3]) * 1e3;
    state.counters["read_to_text"] = Median(vecTimes[3]) / Median(vecTimes[2]);
}

[[maybe_unused]] const bool kRegistered = [] {
    static std::vector<CBenchDocument> vecDocuments = GetBenchDocuments();
    vecDocuments.push_back({"track", MakeTrack(100'000)});
    const auto add = [](const std::string& strName, const CBenchDocument& input, bool bSuggested) {
        benchmark::RegisterBenchmark((strName + input.strName).c_str(), Compare, input, bSuggested)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    for (const CBenchDocument& input : vecDocuments)
        add("FastInfoset/plain/", input, false);
    add("FastInfoset/suggested/", vecDocuments.back(), true);
    return true;
}();

} // namespace
