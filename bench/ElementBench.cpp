// Reading a document into CElement, and writing that CElement as XML text, against Expat with
// empty, namespace-aware handlers on the same bytes. All run in turn in every iteration, so that
// the ratios hold whatever else the machine does.

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlTextWriter.h"
#include "bench/BenchDocuments.h"
#include "bench/BenchMemory.h"
#include "bench/BenchTiming.h"

#include <benchmark/benchmark.h>

namespace {

using namespace QnXmlLib16;

void Load(CXmlDocument& document, const std::string& strXml)
{
    document.LoadXmlStream(reinterpret_cast<const unsigned char*>(strXml.data()), strXml.size());
}

// What the tree of CElement adds, the document that it is copied from left aside.
double MeasureTreeMemory(const std::string& strXml)
{
    CXmlDocument document;
    Load(document, strXml);
    CSmartPtr<CElement> pElement(new CElement("root"));
    return MeasurePeakMemory([&] { pElement->CopyXmlElement(document.GetDocumentElement()); });
}

void ReadAndWrite(benchmark::State& state, const CBenchDocument& input)
{
    const double bytes = static_cast<double>(input.strXml.size());
    const double tree = MeasureTreeMemory(input.strXml);
    std::vector<double> vecExpat;
    std::vector<double> vecLoad;
    std::vector<double> vecCopy;
    std::vector<double> vecWrite;
    std::vector<double> vecDestroy;
    unsigned long nWritten = 0;
    for (auto _ : state) {
        const CStopwatch expat;
        if (!ParseWithEmptyHandlers(input.strXml.data(), input.strXml.size()))
            state.SkipWithError("Expat refuses the document");
        vecExpat.push_back(expat.Seconds());

        CSmartPtr<CElement> pElement(new CElement("root"));
        {
            const CStopwatch load;
            CXmlDocument document;
            Load(document, input.strXml);
            vecLoad.push_back(load.Seconds());
            const CStopwatch copy;
            pElement->CopyXmlElement(document.GetDocumentElement());
            vecCopy.push_back(copy.Seconds());
        }
        {
            const CStopwatch write;
            CTextStream stream;
            CXmlTextWriter writer(stream);
            writer.Open();
            writer.SetFormat(false);
            CXmlObjectBase::ToXml_Int(pElement.GetPtr(), &writer, true, "",
                                      CSerializationContext::m_defaultContext, false);
            writer.Close();
            nWritten = stream.GetLength();
            vecWrite.push_back(write.Seconds());
        }
        const CStopwatch destroy;
        pElement.Reset();
        vecDestroy.push_back(destroy.Seconds());
        state.SetIterationTime(vecLoad.back() + vecCopy.back() + vecWrite.back());
    }
    const double expat = Median(vecExpat);
    state.counters["MB"] = bytes / 1e6;
    state.counters["tree_to_bytes"] = tree / bytes;
    state.counters["MB_written"] = static_cast<double>(nWritten) / 1e6;
    state.counters["expat_ms"] = expat * 1e3;
    state.counters["copy_to_expat"] = Median(vecCopy) / expat;
    state.counters["read_to_expat"] = (Median(vecLoad) + Median(vecCopy)) / expat;
    state.counters["write_to_expat"] = Median(vecWrite) / expat;
    state.counters["destroy_to_expat"] = Median(vecDestroy) / expat;
}

// Registered ahead of main, since the documents are known at run time only.
[[maybe_unused]] const bool kRegistered = [] {
    for (const CBenchDocument& input : GetBenchDocuments())
        benchmark::RegisterBenchmark(("Element/" + input.strName).c_str(), ReadAndWrite, input)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
