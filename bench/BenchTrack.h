#pragma once

#include "QnXmlLib16/binding/SerializationContext.h"
#include "examples/gpx/model/GpxType.h"
#include "examples/gpx/model/TrkType.h"
#include "examples/gpx/model/TrksegType.h"
#include "examples/gpx/model/WptType.h"

#include <cstdio>
#include <string>

// The track that the benchmarks of bound objects read and write.

// A track of nPoints, about 140 bytes each: place with seven digits, height, time to the second.
inline std::string MakeTrack(int nPoints)
{
    std::string strXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\""
                         " creator=\"benchmark\">\n  <trk>\n    <name>Made up</name>\n"
                         "    <trkseg>\n";
    strXml.reserve(static_cast<std::size_t>(nPoints) * 140 + 400);
    char acPoint[256];
    for (int i = 0; i < nPoints; ++i) {
        const int nSeconds = i % 86400;
        std::snprintf(acPoint, sizeof acPoint,
                      "      <trkpt lat=\"46.%07d\" lon=\"7.%07d\">\n"
                      "        <ele>%d.%d</ele>\n"
                      "        <time>2026-05-%02dT%02d:%02d:%02dZ</time>\n"
                      "      </trkpt>\n",
                      1000000 + i * 13 % 8999999, 1000000 + i * 17 % 8999999, 400 + i % 3000,
                      i % 10, 1 + i / 86400 % 28, nSeconds / 3600, nSeconds / 60 % 60,
                      nSeconds % 60);
        strXml += acPoint;
    }
    return strXml += "    </trkseg>\n  </trk>\n</gpx>\n";
}

inline void Read(Gpx::CGpxType& document, std::string& strXml)
{
    document.FromXmlStream(reinterpret_cast<unsigned char*>(strXml.data()), strXml.size(),
                           QnXmlLib16::CSerializationContext::m_defaultContext);
}

inline int CountPoints(const Gpx::CGpxType& document)
{
    return document.GetTrk()->Item(0)->GetTrkseg()->Item(0)->GetTrkpt()->GetCount();
}
