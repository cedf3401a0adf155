// The same bound objects in every form that they have: XML text, JSON and Fast Infoset, plain and
// under gzip. Each form is written and read in turn with unformatted XML text in every iteration,
// so that the ratios hold whatever else the machine does; times are those of the processor.

#include "QnXmlLib16/fastinfoset/FInfoDecl.h"
#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "bench/BenchMemory.h"
#include "bench/BenchTiming.h"
#include "bench/BenchTrack.h"

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace QnXmlLib16;

enum class Form
{
    Xml,
    FormattedXml,
    Json,
    FastInfoset,
    SuggestedFastInfoset // the encodings of SetSuggestedValues
};

CBinaryData WriteForm(const Gpx::CGpxType& document, Form form,
                      const CSerializationContext& context, CompressionType eCompression)
{
    switch (form) {
    case Form::Json:
        return document.ToJsonStream(false, XmlEncoding_UTF8, EOLType_LF, context, eCompression);
    case Form::FastInfoset:
    case Form::SuggestedFastInfoset:
        return document.ToFastInfosetStream(FInfoDecl_None, context, eCompression);
    default:
        return document.ToXmlStream(true, form == Form::FormattedXml, XmlEncoding_UTF8, EOLType_LF,
                                    context, eCompression);
    }
}

void ReadForm(Gpx::CGpxType& document, Form form, const CBinaryData& data,
              const CSerializationContext& context)
{
    if (form == Form::Json)
        document.FromJsonStream(data, context);
    else
        document.FromXmlStream(data, context);
}

void Compare(benchmark::State& state, Form form, CompressionType eCompression)
{
    const int nPoints = static_cast<int>(state.range(0));
    CSerializationContext context;
    if (form == Form::SuggestedFastInfoset)
        context.GetFIContext().SetSuggestedValues();
    std::string strTrack = MakeTrack(nPoints);
    const CSmartPtr<Gpx::CGpxType> pSource = new Gpx::CGpxType;
    Read(*pSource, strTrack);
    strTrack = std::string();

    const CBinaryData text = WriteForm(*pSource, Form::Xml, context, CompressionType_None);
    const CBinaryData data = WriteForm(*pSource, form, context, eCompression);
    const auto readOnce = [&](Form eForm, const CBinaryData& from) {
        const CSmartPtr<Gpx::CGpxType> pCopy = new Gpx::CGpxType;
        const double seconds = ThreadSeconds([&] { ReadForm(*pCopy, eForm, from, context); });
        if (CountPoints(*pCopy) != nPoints)
            state.SkipWithError("points are missing");
        return seconds;
    };
    const double readPeak = MeasurePeakMemory([&] { readOnce(form, data); });

    const auto writeOnce = [&](Form eForm, CompressionType eType) {
        return ThreadSeconds(
            [&] { benchmark::DoNotOptimize(WriteForm(*pSource, eForm, context, eType)); });
    };

    // What runs second finds memory that the first one left: each goes first once.
    std::vector<double> vecWriteText;
    std::vector<double> vecWrite;
    std::vector<double> vecReadText;
    std::vector<double> vecRead;
    for (auto _ : state) {
        vecWriteText.push_back(writeOnce(Form::Xml, CompressionType_None));
        vecWrite.push_back(writeOnce(form, eCompression));
        vecWrite.back() += writeOnce(form, eCompression);
        vecWriteText.back() += writeOnce(Form::Xml, CompressionType_None);
        vecReadText.push_back(readOnce(Form::Xml, text));
        vecRead.push_back(readOnce(form, data));
        vecRead.back() += readOnce(form, data);
        vecReadText.back() += readOnce(Form::Xml, text);
        state.SetIterationTime(vecRead.back() + vecWrite.back());
    }
    state.counters["MB"] = static_cast<double>(data.GetLength()) / 1e6;
    state.counters["size_to_xml"] =
        static_cast<double>(data.GetLength()) / static_cast<double>(text.GetLength());
    state.counters["write_ns_a_point"] = Median(vecWrite) / 2 * 1e9 / nPoints;
    state.counters["write_to_xml"] = Median(vecWrite) / Median(vecWriteText);
    state.counters["read_ns_a_point"] = Median(vecRead) / 2 * 1e9 / nPoints;
    state.counters["read_to_xml"] = Median(vecRead) / Median(vecReadText);
    state.counters["peak_MB_read"] = readPeak / 1e6;
}

void RegisterForm(const std::string& strName, Form form)
{
    for (const CompressionType eCompression : {CompressionType_None, CompressionType_GZip}) {
        const std::string strForm = strName + (eCompression == CompressionType_None ? "" : ".gz");
        benchmark::RegisterBenchmark(strForm.c_str(), Compare, form, eCompression)
            ->RangeMultiplier(10)
            ->Range(1000, 1000000)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    RegisterForm("Xml", Form::Xml);
    RegisterForm("FormattedXml", Form::FormattedXml);
    RegisterForm("Json", Form::Json);
    RegisterForm("FastInfoset", Form::FastInfoset);
    RegisterForm("SuggestedFastInfoset", Form::SuggestedFastInfoset);
    return true;
}();

} // namespace
