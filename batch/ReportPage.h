// The run's report as one HTML page that needs nothing but a browser: the charts' library and the
// thumbnails are inside it, so it opens offline and from any folder.
#pragma once

#include "ReportStats.h"

#include <string>

class ReportPage {
public:
    struct Options {
        std::string chartLibrary; // the charts' JavaScript, inlined; empty: tables only
        const Baseline::Comparison* comparison = nullptr;
        size_t maxThumbnails = 60;
        int thumbnailSide = 200;
    };

    static std::string Html(const ReportStats& stats, const Options& options);

    // Writes folder/index.html (making the folder); false with error set.
    static bool Write(const std::string& folder, const std::string& html, std::string& error);

    // The installed charts library (Debian's libjs-chart.js); empty when it is not there.
    static std::string ChartLibrary();
};
