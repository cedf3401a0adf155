// JSON text to XML text against Expat with empty handlers on the XML that comes out, and JSON
// text against XML text out of the same calls, for tracks of 1,000 to 1,000,000 points.

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/json/JsonTextReader.h"
#include "QnXmlLib16/json/JsonTextWriter.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"
#include "bench/BenchTiming.h"

#include <optional>

#include <benchmark/benchmark.h>

namespace {

using namespace QnXmlLib16;

const std::string kNamespace = "http://www.topografix.com/GPX/1/1";

// One point of a track, its values given as texts.
struct SPoint
{
    std::string strLat;
    std::string strLon;
    std::string strEle;
    std::string strTime;
};

std::vector<SPoint> MakePoints(long iCount)
{
    std::vector<SPoint> vecPoints;
    for (long i = 0; i < iCount; ++i)
        vecPoints.push_back({"59." + std::to_string(100000 + i % 900000),
                             "18." + std::to_string(200000 + i % 700000),
                             std::to_string(10 + i % 90) + ".5", "2024-02-29T12:30:00Z"});
    return vecPoints;
}

void WriteElement(CXmlWriter& writer, const char* pszName, const std::string& strValue,
                  ItemType eType)
{
    writer.WriteStartElement(pszName, kNamespace);
    writer.WriteString(strValue, eType, false);
    writer.WriteEndElement();
}

void WriteTrack(CXmlWriter& writer, const std::vector<SPoint>& vecPoints)
{
    writer.SetDefaultNamespace(kNamespace);
    writer.WriteStartElement("trkseg", kNamespace);
    writer.SetContextState(CXmlWriter::ContextState_BeforeItems);
    for (const SPoint& point : vecPoints) {
        writer.WriteStartElement("trkpt", kNamespace);
        writer.WriteAttributeString("lat", "", point.strLat, it_decimal);
        writer.WriteAttributeString("lon", "", point.strLon, it_decimal);
        WriteElement(writer, "ele", point.strEle, it_decimal);
        WriteElement(writer, "time", point.strTime, it_datetime);
        writer.WriteEndElement();
    }
    writer.SetContextState(CXmlWriter::ContextState_AfterItems);
    writer.WriteEndElement();
}

void WriteXml(CTextStream& stream, const std::vector<SPoint>& vecPoints)
{
    CXmlTextWriter writer(stream);
    WriteTrack(writer, vecPoints);
}

void WriteJson(CTextStream& stream, const std::vector<SPoint>& vecPoints)
{
    CJsonTextWriter writer(stream);
    writer.WriteStartDocument();
    WriteTrack(writer, vecPoints);
    writer.WriteEndDocument();
}

void JsonToXml(benchmark::State& state)
{
    CTextStream stream;
    WriteJson(stream, MakePoints(state.range(0)));
    const std::string strJson = stream.GetText();
    const CSerializationContext context;
    std::vector<double> vecExpat;
    std::vector<double> vecConvert;
    for (auto _ : state) {
        const CStopwatch convert;
        const CBinaryData xml = CJsonTextReader::ConvertJsonToXml(strJson, context);
        vecConvert.push_back(convert.Seconds());

        const CStopwatch expat;
        if (!ParseWithEmptyHandlers(reinterpret_cast<const char*>(xml.GetData()), xml.GetLength()))
            state.SkipWithError("Expat refuses the document");
        vecExpat.push_back(expat.Seconds());
        state.SetIterationTime(vecConvert.back());
    }
    state.counters["MB"] = static_cast<double>(strJson.size()) / 1e6;
    state.counters["ns_per_point"] = Median(vecConvert) * 1e9 / static_cast<double>(state.range(0));
    state.counters["convert_to_expat"] = Median(vecConvert) / Median(vecExpat);
}

void JsonWriting(benchmark::State& state)
{
    const std::vector<SPoint> vecPoints = MakePoints(state.range(0));
    std::vector<double> vecXml;
    std::vector<double> vecJson;
    for (auto _ : state) {
        std::optional<CTextStream> stream(std::in_place);
        const CStopwatch xml;
        WriteXml(*stream, vecPoints);
        vecXml.push_back(xml.Seconds());

        stream.emplace();
        const CStopwatch json;
        WriteJson(*stream, vecPoints);
        vecJson.push_back(json.Seconds());
        state.SetIterationTime(vecJson.back());
    }
    state.counters["ns_per_point"] = Median(vecJson) * 1e9 / static_cast<double>(state.range(0));
    state.counters["json_to_xml"] = Median(vecJson) / Median(vecXml);
}

BENCHMARK(JsonToXml)->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime();
BENCHMARK(JsonWriting)->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime();

} // namespace
