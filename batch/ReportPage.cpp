#include "ReportPage.h"

#include "JsonText.h"
#include "PluginPalette.h"
#include "TextEncoding.h"
#include "Thumbnail.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

#ifndef GLYPHOR_CHART_LIBRARY
#define GLYPHOR_CHART_LIBRARY "/usr/share/javascript/chart.js/chart.min.js"
#endif

namespace {

std::string Escape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '&':
            out += "&amp;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string Hex(uint32_t rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06X", rgb & 0xFFFFFFu);
    return text;
}

// JSON for a <script> element: "</" would end it early.
std::string ScriptSafe(std::string json) {
    for (size_t at = json.find("</"); at != std::string::npos; at = json.find("</", at + 2)) {
        json.replace(at, 2, "<\\/");
    }
    return json;
}

std::string Str(const std::string& text) {
    return TextEncoding::JsonString(text, false);
}

std::string DataJson(const ReportStats& stats) {
    std::string json = "{\"plugins\": [";
    for (size_t p = 0; p < stats.plugins.size(); ++p) {
        json += (p ? ", " : "") + Str(stats.plugins[p]);
    }
    json += "], \"colours\": [";
    for (size_t p = 0; p < stats.plugins.size(); ++p) {
        json += std::string(p ? ", \"" : "\"") + Hex(PluginPalette::Colour(p)) + "\"";
    }
    json += "], \"folders\": [";
    for (size_t f = 0; f < stats.folders.size(); ++f) {
        const ReportStats::Folder& folder = stats.folders[f];
        json += std::string(f ? ", " : "") + "{\"name\": " + Str(folder.name) + ", \"images\": [";
        for (size_t p = 0; p < folder.images.size(); ++p) {
            json += (p ? ", " : "") + std::to_string(folder.images[p]);
        }
        json += "], \"read\": [";
        for (size_t p = 0; p < folder.read.size(); ++p) {
            json += (p ? ", " : "") + std::to_string(folder.read[p]);
        }
        json += "]}";
    }
    json += "], \"times\": [";
    for (size_t p = 0; p < stats.times.size(); ++p) {
        const ReportStats::Spread& s = stats.times[p];
        json += std::string(p ? ", " : "") + "{\"count\": " + std::to_string(s.count) +
                ", \"min\": " + JsonNumber(s.min) + ", \"q1\": " + JsonNumber(s.q1) +
                ", \"median\": " + JsonNumber(s.median) + ", \"q3\": " + JsonNumber(s.q3) +
                ", \"max\": " + JsonNumber(s.max) + "}";
    }
    return json + "]}";
}

std::string AgreementTable(const ReportStats& stats) {
    std::string html = "<table class=\"matrix\"><tr><th>reads &darr; but not &rarr;</th>";
    for (const std::string& plugin : stats.plugins) {
        html += "<th>" + Escape(plugin) + "</th>";
    }
    html += "</tr>";
    for (size_t a = 0; a < stats.plugins.size(); ++a) {
        html += "<tr><th style=\"color:" + Hex(PluginPalette::Colour(a)) + "\">" + Escape(stats.plugins[a]) +
                " (" + std::to_string(stats.readImages[a]) + ")</th>";
        for (size_t b = 0; b < stats.plugins.size(); ++b) {
            const long n = stats.onlyRead[a][b];
            html += a == b
                        ? "<td class=\"self\">&ndash;</td>"
                        : "<td" + std::string(n ? " class=\"hot\"" : "") + ">" + std::to_string(n) + "</td>";
        }
        html += "</tr>";
    }
    return html + "</table>";
}

std::string BaselineTable(const Baseline::Comparison& comparison) {
    std::string html =
        "<table><tr><th>Plug-in</th><th>Matched</th><th>Newly read</th><th>Lost</th><th>Changed</th>"
        "<th>Mean time before</th><th>Mean time now</th></tr>";
    for (const Baseline::PluginSummary& s : comparison.plugins) {
        const double n = s.matched > 0 ? static_cast<double>(s.matched) : 1.0;
        char times[96];
        std::snprintf(times, sizeof times, "<td>%.2f ms</td><td>%.2f ms</td>", s.timeBeforeMs / n,
                      s.timeNowMs / n);
        html += "<tr><td>" + Escape(s.plugin) + "</td><td>" + std::to_string(s.matched) + "</td><td>" +
                std::to_string(s.newlyRead) + "</td><td" + (s.lost ? " class=\"hot\"" : "") + ">" +
                std::to_string(s.lost) + "</td><td" + (s.changed ? " class=\"hot\"" : "") + ">" +
                std::to_string(s.changed) + "</td>" + times + "</tr>";
    }
    return html + "</table>";
}

std::string Figure(const ReportStats& stats, const ReportStats::Image& image, int side) {
    const RunRow& first = *image.rows.front();
    std::string html = "<figure>";
    Thumbnail thumb;
    std::string error;
    if (Thumbnail::Make(first.path, side, thumb, error)) {
        html += "<svg viewBox=\"0 0 " + std::to_string(thumb.width) + " " + std::to_string(thumb.height) +
                "\" width=\"" + std::to_string(thumb.thumbWidth) + "\" height=\"" +
                std::to_string(thumb.thumbHeight) + "\"><image width=\"" + std::to_string(thumb.width) +
                "\" height=\"" + std::to_string(thumb.height) + "\" href=\"data:image/png;base64," +
                TextEncoding::Base64(thumb.png) + "\"/>";
        const double stroke = std::max(thumb.width, thumb.height) / 100.0;
        for (const RunRow* row : image.rows) {
            for (const RunSymbol& symbol : row->symbols) {
                std::string points;
                for (const auto& corner : symbol.corners) {
                    points += JsonNumber(corner.first) + "," + JsonNumber(corner.second) + " ";
                }
                html += "<polygon points=\"" + points + "\" fill=\"none\" stroke=\"" +
                        Hex(PluginPalette::Colour(stats.PluginIndex(row->plugin))) + "\" stroke-width=\"" +
                        JsonNumber(stroke) + "\"/>";
            }
        }
        html += "</svg>";
    } else {
        html += "<div class=\"missing\">" + Escape(error) + "</div>";
    }
    html += "<figcaption><b>" + Escape(first.relative) + "</b><br>" + Escape(image.reason);
    for (const RunRow* row : image.rows) {
        html += "<br><span style=\"color:" + Hex(PluginPalette::Colour(stats.PluginIndex(row->plugin))) +
                "\">" + Escape(row->plugin) + "</span>: " +
                (row->Read() ? std::to_string(row->length) + " bytes"
                             : Escape(row->status == "ok" ? "nothing" : row->status));
    }
    return html + "</figcaption></figure>";
}

const char kStyle[] = R"(body{font-family:sans-serif;margin:1.5em;color:#222}
h1{font-size:1.5em}h2{font-size:1.2em;margin-top:1.5em}
.charts{display:flex;flex-wrap:wrap;gap:2em}.chart{width:560px;height:320px}
table{border-collapse:collapse}td,th{border:1px solid #ccc;padding:3px 8px;text-align:right}
.matrix td.hot,td.hot{background:#fde0dc}.matrix td.self{background:#eee}
.thumbs{display:flex;flex-wrap:wrap;gap:1em}figure{margin:0;width:210px;font-size:.8em}
svg{background:#f4f4f4;border:1px solid #ccc}.missing{color:#a00}
)";

const char kScript[] = R"(
const data = JSON.parse(document.getElementById('report-data').textContent);
let drawn = 0;
const floor = ms => Math.max(ms, 0.01); // a log scale has no zero
if (typeof Chart !== 'undefined') {
  new Chart(document.getElementById('detection'), {type: 'bar',
    data: {labels: data.folders.map(f => f.name),
      datasets: data.plugins.map((p, i) => ({label: p, backgroundColor: data.colours[i],
        data: data.folders.map(f => f.images[i] ? 100 * f.read[i] / f.images[i] : null)}))},
    options: {animation: false, maintainAspectRatio: false,
      scales: {y: {min: 0, max: 100, title: {display: true, text: '% of images read'}}}}});
  drawn++;
  const faded = data.colours.map(c => c + '55');
  new Chart(document.getElementById('times'), {type: 'bar',
    data: {labels: data.plugins, datasets: [
      {label: 'min to max', data: data.times.map(t => [floor(t.min), floor(t.max)]), backgroundColor: faded,
       barPercentage: 0.08, grouped: false, order: 2},
      {label: 'middle half', data: data.times.map(t => [floor(t.q1), floor(t.q3)]), backgroundColor: data.colours,
       barPercentage: 0.5, grouped: false, order: 1},
      {type: 'line', label: 'median', data: data.times.map(t => floor(t.median)), showLine: false,
       pointStyle: 'line', pointRadius: 24, borderColor: '#000', borderWidth: 3, order: 0}]},
    options: {animation: false, maintainAspectRatio: false,
      scales: {y: {type: 'logarithmic', title: {display: true, text: 'decode time (ms, log scale)'}}}}});
  drawn++;
}
document.body.dataset.charts = drawn;
)";

} // namespace

std::string ReportPage::Html(const ReportStats& stats, const Options& options) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta "
                       "charset=\"utf-8\"><title>glyphor-batch report</title><style>";
    html += kStyle;
    html += "</style></head><body data-charts=\"0\">\n<h1>glyphor-batch report</h1>\n<p>" +
            std::to_string(stats.imageCount) + " images, " + std::to_string(stats.plugins.size()) +
            " plug-ins, " + std::to_string(stats.flagged.size()) + " images where plug-ins disagree" +
            (options.comparison ? " or the baseline read otherwise" : "") + ".</p>\n";
    if (options.chartLibrary.empty()) {
        html += "<p class=\"missing\">Charts need the package libjs-chart.js.</p>\n";
    }
    html +=
        "<div class=\"charts\"><div><h2>Detection per folder</h2><div class=\"chart\"><canvas "
        "id=\"detection\">"
        "</canvas></div></div><div><h2>Decode times</h2><div class=\"chart\"><canvas id=\"times\"></canvas>"
        "</div></div></div>\n<h2>Agreement: images the row's plug-in reads and the column's does not</h2>\n" +
        AgreementTable(stats) + "\n";
    if (options.comparison) {
        html += "<h2>Against the baseline</h2>\n" + BaselineTable(*options.comparison) + "\n";
    }
    html += "<h2>Images to look at</h2>\n<div class=\"thumbs\">";
    for (size_t i = 0; i < stats.flagged.size() && i < options.maxThumbnails; ++i) {
        html += Figure(stats, stats.flagged[i], options.thumbnailSide) + "\n";
    }
    html += "</div>\n";
    if (stats.flagged.size() > options.maxThumbnails) {
        html += "<p>and " + std::to_string(stats.flagged.size() - options.maxThumbnails) + " more.</p>\n";
    }
    html +=
        "<script type=\"application/json\" id=\"report-data\">" + ScriptSafe(DataJson(stats)) + "</script>\n";
    if (!options.chartLibrary.empty()) {
        html += "<script>" + options.chartLibrary + "</script>\n";
    }
    html += std::string("<script>") + kScript + "</script>\n</body></html>\n";
    return html;
}

bool ReportPage::Write(const std::string& folder, const std::string& html, std::string& error) {
    std::error_code code;
    fs::create_directories(folder, code);
    const fs::path path = fs::path(folder) / "index.html";
    const fs::path part = fs::path(folder) / "index.html.part";
    {
        std::ofstream file(part, std::ios::binary | std::ios::trunc);
        file << html;
        file.close();
        if (!file) {
            fs::remove(part, code);
            error = "cannot write report '" + path.string() + "'";
            return false;
        }
    }
    fs::rename(part, path, code);
    if (code) {
        fs::remove(part, code);
        error = "cannot write report '" + path.string() + "'";
        return false;
    }
    return true;
}

std::string ReportPage::ChartLibrary() {
    std::ifstream file(GLYPHOR_CHART_LIBRARY, std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>())
                : std::string();
}
