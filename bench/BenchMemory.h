#pragma once

#include <cstdio>
#include <memory>

#include <malloc.h>

// A line of /proc/self/status in bytes; 0 where there is none.
inline double GetMemory(const char* pszFormat)
{
    unsigned long uKilobytes = 0;
    const std::unique_ptr<FILE, int (*)(FILE*)> pFile(std::fopen("/proc/self/status", "r"),
                                                      std::fclose);
    char acLine[256];
    while (pFile && std::fgets(acLine, sizeof acLine, pFile.get()))
        if (std::sscanf(acLine, pszFormat, &uKilobytes) == 1)
            break;
    return static_cast<double>(uKilobytes) * 1024;
}

// The peak of the resident memory that an action adds, in bytes.
template <class TAction>
double MeasurePeakMemory(const TAction& action)
{
    malloc_trim(0);
    if (FILE* pFile = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", pFile); // the peak becomes the present use
        std::fclose(pFile);
    }
    const double before = GetMemory("VmRSS: %lu");
    action();
    return GetMemory("VmHWM: %lu") - before;
}
