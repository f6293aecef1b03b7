#include "JsonWriter.h"

#include "DecodeStatus.h"
#include "JsonText.h"
#include "SymbologyNames.h"
#include "TextEncoding.h"

#include <chrono>

namespace {

std::string Utf8(const std::string& text) {
    return TextEncoding::JsonString(text, false);
}
std::string TextOrNull(const std::optional<std::string>& text) {
    return text ? Utf8(*text) : "null";
}

std::string Milliseconds(std::chrono::nanoseconds time) {
    return JsonNumber(std::chrono::duration<double, std::milli>(time).count());
}

} // namespace

void JsonWriter::Begin() {
    m_out << "{\n  \"rows\": [";
}

void JsonWriter::Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) {
    m_out << (m_first ? "\n" : ",\n");
    m_first = false;
    const DecodeOutcome& outcome = row.outcome();
    const std::vector<DecodedSymbol>& symbols = outcome.symbols;
    const bool any = !symbols.empty();
    m_out << "    {\"file\": " << Utf8(input.display) << ", \"path\": " << Utf8(input.path)
          << ", \"relative\": " << Utf8(input.outputName) << ", \"index\": " << input.index
          << ", \"plugin\": " << Utf8(row.row.pluginName)
          << ", \"imgProcess\": " << Milliseconds(outcome.imageProcess)
          << ", \"time\": " << Milliseconds(outcome.decode)
          << ", \"results\": " << Utf8(DecodeStatus::ResultsUtf8(row.row))
          << ", \"text\": " << TextOrNull(RowText(row)) << ", \"status\": \"" << DecodeStatus::Name(outcome)
          << '"'
          << ", \"symbology\": " << (any ? Utf8(SymbologyNames::Name(symbols.back().symbology)) : "null")
          << ", \"eci\": " << (any ? std::to_string(symbols.back().eci) : "null")
          << ", \"length\": " << row.data.size() << ", \"data\": \"" << TextEncoding::Base64(row.data)
          << "\", \"symbols\": [";
    for (size_t i = 0; i < symbols.size(); ++i) {
        const DecodedSymbol& symbol = symbols[i];
        m_out << (i ? ", " : "") << "{\"symbology\": " << Utf8(SymbologyNames::Name(symbol.symbology))
              << ", \"dataType\": " << symbol.dataType << ", \"eci\": " << symbol.eci
              << ", \"text\": " << TextOrNull(SymbolUtf8(symbol)) << ", \"length\": " << symbol.bytes.size()
              << ", \"data\": \"" << TextEncoding::Base64(symbol.bytes) << "\", \"corners\": [";
        for (size_t c = 0; c < symbol.corners.size(); ++c) {
            m_out << (c ? ", [" : "[") << symbol.corners[c].X << ", " << symbol.corners[c].Y << "]";
        }
        m_out << "]}";
    }
    m_out << "]";
    if (verdict) {
        m_out << ", \"expected\": \"" << ExpectationCheck::Name(*verdict) << '"';
    }
    m_out << "}";
    m_out.flush();
}

void JsonWriter::End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) {
    m_out << (m_first ? "]" : "\n  ]")
          << ",\n  \"statistics\": {\"averageTime\": " << JsonNumber(statistics.averageTimeMs)
          << ", \"imageCount\": " << statistics.imageCount
          << ", \"symbolsCount\": " << statistics.symbolsCount
          << ", \"averageImageProcessTime\": " << JsonNumber(statistics.averageImageProcessMs) << "}";
    if (summary) {
        m_out << ",\n  \"expectations\": [";
        bool first = true;
        for (const ExpectationSummary::Counts& c : summary->PerPlugin()) {
            m_out << (first ? "\n" : ",\n") << "    {\"plugin\": " << Utf8(c.plugin)
                  << ", \"passed\": " << c.passed << ", \"misread\": " << c.misread
                  << ", \"missed\": " << c.missed << ", \"unchecked\": " << c.unchecked << "}";
            first = false;
        }
        m_out << (first ? "]" : "\n  ]");
    }
    for (const auto& section : m_sections) {
        m_out << ",\n  " << Utf8(section.first) << ": " << section.second;
    }
    m_out << "\n}\n";
    m_out.flush();
}
