#include "TableWriter.h"

#include "DecodeStatus.h"
#include "TextEncoding.h"

#include <algorithm>

namespace {

const char kGap[] = "  ";
// "Img Process" and "Time" hold "%dms": the header's width, and up to 999999ms.
constexpr size_t kImageProcessWidth = 11;
constexpr size_t kTimeWidth = 8;

std::string Padded(const std::string& text, size_t width) {
    const size_t used = TextEncoding::DisplayWidth(text);
    return used >= width ? text : text + std::string(width - used, ' ');
}

} // namespace

TableWriter::TableWriter(std::ostream& out, const std::vector<ImageInput>& inputs,
                         const std::vector<std::string>& plugins)
    : m_out(out), m_fileWidth(9), m_pluginWidth(6) {
    for (const ImageInput& input : inputs) {
        m_fileWidth =
            std::max(m_fileWidth, TextEncoding::DisplayWidth(TextEncoding::TableText(input.display, false)));
    }
    for (const std::string& plugin : plugins) {
        m_pluginWidth =
            std::max(m_pluginWidth, TextEncoding::DisplayWidth(TextEncoding::TableText(plugin, false)));
    }
}

void TableWriter::WriteLine(const std::string& file, const std::string& plugin,
                            const std::string& imageProcess, const std::string& time,
                            const std::string& results) {
    std::string line = Padded(file, m_fileWidth) + kGap + Padded(plugin, m_pluginWidth) + kGap +
                       Padded(imageProcess, kImageProcessWidth) + kGap + Padded(time, kTimeWidth) + kGap +
                       results;
    // No trailing blanks when the results column is empty.
    line.erase(line.find_last_not_of(' ') + 1);
    m_out << line << '\n';
}

void TableWriter::Begin() {
    WriteLine("File name", "Plugin", "Img Process", "Time", "Results");
}

void TableWriter::Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict>) {
    WriteLine(TextEncoding::TableText(input.display, false),
              TextEncoding::TableText(row.row.pluginName, false), row.row.imageProcess, row.row.time,
              TextEncoding::TableText(DecodeStatus::ResultsUtf8(row.row), false));
    m_out.flush();
}

void TableWriter::End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) {
    m_out << '\n';
    for (const std::string& line : StatisticsLines(statistics)) {
        m_out << line << '\n';
    }
    if (summary) {
        m_out << '\n';
        for (const std::string& line : summary->TableLines()) {
            m_out << line << '\n';
        }
    }
    m_out.flush();
}
