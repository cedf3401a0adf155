// Reads GPX 1.1 files into bound objects, tells what is in them, and writes them again.
#include "examples/common/Output.h"
#include "examples/gpx/model/GpxType.h"
#include "examples/gpx/model/RteType.h"
#include "examples/gpx/model/TrkType.h"
#include "examples/gpx/model/TrksegType.h"
#include "examples/gpx/model/WptType.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

using namespace QnXmlLib16;

namespace {

// The smallest and the largest of the values seen.
template <class T>
struct CRange
{
    std::optional<T> m_min;
    std::optional<T> m_max;

    // A value that can't be compared, such as a time without a zone among times with one, is
    // passed over.
    void Add(const T& value)
    {
        if (!m_min || value < *m_min)
            m_min = value;
        if (!m_max || value > *m_max)
            m_max = value;
    }

    std::string ToString() const
    {
        return m_min ? m_min->ToString() + " to " + m_max->ToString() : "none";
    }
};

struct CSummary
{
    int m_nRoutePoints = 0;
    int m_nSegments = 0;
    int m_nTrackPoints = 0;
    double m_dTrackKm = 0;
    CRange<CDecimal> m_latitudes;
    CRange<CDecimal> m_longitudes;
    CRange<CDateTime> m_times;

    void AddPoint(const Gpx::CWptType& point)
    {
        m_latitudes.Add(point.GetLat());
        m_longitudes.Add(point.GetLon());
        if (point.GetTime())
            m_times.Add(*point.GetTime());
    }
};

// Great-circle distance by the haversine formula, on a sphere of the mean radius of WGS 84.
double GetDistanceKm(const Gpx::CWptType& from, const Gpx::CWptType& to)
{
    constexpr double kRadiusKm = 6371.0088;
    constexpr double kRadians = 3.14159265358979323846 / 180;
    const double dFromLat = from.GetLat().ToDouble() * kRadians;
    const double dToLat = to.GetLat().ToDouble() * kRadians;
    const double dSinLat = std::sin((dToLat - dFromLat) / 2);
    const double dSinLon =
        std::sin((to.GetLon().ToDouble() - from.GetLon().ToDouble()) * kRadians / 2);
    const double dHaversine =
        dSinLat * dSinLat + std::cos(dFromLat) * std::cos(dToLat) * dSinLon * dSinLon;
    return 2 * kRadiusKm * std::asin(std::sqrt(std::fmin(1, dHaversine)));
}

template <class T>
const T& ItemOf(const CNode* pNode)
{
    return *static_cast<const T*>(pNode->GetItem());
}

// The points are those of a track segment, and their distances count.
void AddSegment(const Gpx::CWptTypeCol& points, CSummary& summary)
{
    const Gpx::CWptType* pLast = nullptr;
    for (const CNode* p = points.begin(); p != points.end(); p = p->GetNext()) {
        const Gpx::CWptType& point = ItemOf<Gpx::CWptType>(p);
        summary.AddPoint(point);
        if (pLast)
            summary.m_dTrackKm += GetDistanceKm(*pLast, point);
        pLast = &point;
    }
    ++summary.m_nSegments;
    summary.m_nTrackPoints += points.GetCount();
}

CSummary Summarise(const Gpx::CGpxType& document)
{
    CSummary summary;
    const auto pWaypoints = document.GetWpt();
    for (const CNode* p = pWaypoints->begin(); p != pWaypoints->end(); p = p->GetNext())
        summary.AddPoint(ItemOf<Gpx::CWptType>(p));
    const auto pRoutes = document.GetRte();
    for (const CNode* p = pRoutes->begin(); p != pRoutes->end(); p = p->GetNext()) {
        const auto pPoints = ItemOf<Gpx::CRteType>(p).GetRtept();
        for (const CNode* pPoint = pPoints->begin(); pPoint; pPoint = pPoint->GetNext())
            summary.AddPoint(ItemOf<Gpx::CWptType>(pPoint));
        summary.m_nRoutePoints += pPoints->GetCount();
    }
    const auto pTracks = document.GetTrk();
    for (const CNode* p = pTracks->begin(); p != pTracks->end(); p = p->GetNext()) {
        const auto pSegments = ItemOf<Gpx::CTrkType>(p).GetTrkseg();
        for (const CNode* pSegment = pSegments->begin(); pSegment; pSegment = pSegment->GetNext())
            AddSegment(*ItemOf<Gpx::CTrksegType>(pSegment).GetTrkpt(), summary);
    }
    return summary;
}

void Print(FILE* pOut, const std::string& strPath, const Gpx::CGpxType& document)
{
    const CSummary summary = Summarise(document);
    std::fprintf(pOut,
                 "%s\n"
                 "  creator    %s\n"
                 "  waypoints  %d\n"
                 "  routes     %d (points: %d)\n"
                 "  tracks     %d (segments: %d, points: %d, length: %.3f km)\n"
                 "  latitude   %s\n"
                 "  longitude  %s\n"
                 "  time       %s\n",
                 strPath.c_str(), document.GetCreator().c_str(), document.GetWpt()->GetCount(),
                 document.GetRte()->GetCount(), summary.m_nRoutePoints,
                 document.GetTrk()->GetCount(), summary.m_nSegments, summary.m_nTrackPoints,
                 summary.m_dTrackKm, summary.m_latitudes.ToString().c_str(),
                 summary.m_longitudes.ToString().c_str(), summary.m_times.ToString().c_str());
}

struct CArguments
{
    examples::COutput m_output;
    std::vector<std::string> m_vecInputs;
    std::optional<std::string> m_strOutput; // set if something is to be written; empty: stdout
    bool m_bHelp = false;
};

// Everything that a reader may be asked to put up with, save that required children are missing:
// the schema has none, and this setting and skipping unknown elements exclude each other.
void Relax(CSerializationContext& context)
{
    context.SetIgnoreUnknownAttributes(true);
    context.SetIgnoreUnknownElements(true);
    context.SetIgnoreInvalidCollectionCounts(true);
    context.SetIgnoreMissingChoice(true);
    context.SetIgnoreNamespaces(true);
}

CArguments ParseArguments(int argc, char** argv)
{
    CArguments arguments;
    arguments.m_output.m_context.SetDefaultNamespaceURI(Gpx::kNamespace);
    for (int i = 1; i < argc; ++i) {
        const std::string strName = argv[i];
        bool bUsed = false;
        if (strName == "--help") {
            arguments.m_bHelp = true;
        }
        else if (strName == "--lax") {
            Relax(arguments.m_output.m_context);
        }
        else if (arguments.m_output.TakeOption(strName, i + 1 < argc ? argv[i + 1] : nullptr,
                                               bUsed)) {
            i += bUsed ? 1 : 0;
            if (strName != "--to")
                continue;
            if (++i >= argc)
                throw examples::CUsageError("--to wants a form and a file");
            arguments.m_strOutput = std::string(argv[i]) == "-" ? "" : argv[i];
        }
        else if (strName.size() > 1 && strName[0] == '-') {
            throw examples::CUsageError("unknown option " + strName);
        }
        else {
            arguments.m_vecInputs.push_back(strName);
        }
    }
    if (arguments.m_bHelp)
        return arguments;
    if (arguments.m_vecInputs.empty())
        throw examples::CUsageError("at least one INPUT, please");
    if (arguments.m_strOutput && arguments.m_vecInputs.size() > 1)
        throw examples::CUsageError("--to writes one INPUT only");
    return arguments;
}

void Process(const CArguments& arguments, const std::string& strInput)
{
    const CSmartPtr<Gpx::CGpxType> pDocument = new Gpx::CGpxType;
    const CSerializationContext& context = arguments.m_output.m_context;
    if (examples::HoldsJson(strInput))
        pDocument->FromJsonFile(strInput.c_str(), context);
    else
        pDocument->FromXmlFile(strInput.c_str(), context);
    if (arguments.m_strOutput)
        arguments.m_output.Write(*arguments.m_strOutput, arguments.m_output.ToBytes(*pDocument));
    // A document on standard output has it for itself.
    Print(arguments.m_strOutput == std::string() ? stderr : stdout, strInput, *pDocument);
}

int Run(int argc, char** argv)
{
    const CArguments arguments = ParseArguments(argc, argv);
    if (arguments.m_bHelp) {
        std::printf(
            "usage: qnxmlgpx [options] INPUT...\n"
            "Reads GPX 1.1 files and prints a summary of each.\n"
            "  --to FORM OUT           write the one INPUT to OUT, - for standard output\n"
            "  --lax                   read what breaks the schema where that is possible:\n"
            "                          unknown attributes and elements are left out, and\n"
            "                          names count without their namespaces. Behind an\n"
            "                          unknown element known ones may be left out too\n"
            "Options for what is written:\n%s"
            "Exit: 0 good, 1 bad input or a failed write, 2 wrong usage.\n",
            examples::COutput::Help());
        return examples::kExitGood;
    }
    int nExit = examples::kExitGood;
    for (const std::string& strInput : arguments.m_vecInputs) {
        try {
            Process(arguments, strInput);
        }
        catch (const CQnException& e) {
            std::fprintf(stderr, "qnxmlgpx: %s: %s\n", strInput.c_str(),
                         e.GetFullMessage().c_str());
            nExit = examples::kExitBadInput;
        }
    }
    return nExit;
}

} // namespace

int main(int argc, char** argv)
{
    return examples::RunProgram("qnxmlgpx", Run, argc, argv);
}
