#include "JsonWriter.h"

#include "DecodeStatus.h"
#include "SymbologyNames.h"
#include "TextEncoding.h"

namespace {

std::string Utf8(const std::string& text) {
    return TextEncoding::JsonString(text, false);
}
std::string Latin1(const std::string& text) {
    return TextEncoding::JsonString(text, true);
}
std::string TextOrNull(const std::optional<std::string>& text) {
    return text ? Utf8(*text) : "null";
}

} // namespace

void JsonWriter::Begin() {
    m_out << "{\n  \"rows\": [";
}

void JsonWriter::Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) {
    m_out << (m_first ? "\n" : ",\n");
    m_first = false;
    const bool any = !row.symbols.empty();
    m_out << "    {\"file\": " << Utf8(input.display) << ", \"path\": " << Utf8(input.path)
          << ", \"plugin\": " << Utf8(row.row.pluginName)
          << ", \"imgProcess\": " << Latin1(row.row.imageProcess) << ", \"time\": " << Latin1(row.row.time)
          << ", \"results\": " << Utf8(DecodeStatus::ResultsUtf8(row.row))
          << ", \"text\": " << TextOrNull(RowText(row))
          << ", \"status\": \"" << DecodeStatus::Name(row.row.decodeCode) << '"'
          << ", \"symbology\": " << (any ? Utf8(SymbologyNames::Name(row.symbology)) : "null")
          << ", \"eci\": " << (any ? std::to_string(row.symbols.back().eci) : "null")
          << ", \"length\": " << row.data.size() << ", \"data\": \"" << TextEncoding::Base64(row.data)
          << "\", \"symbols\": [";
    for (size_t i = 0; i < row.symbols.size(); ++i) {
        const BatchSymbol& symbol = row.symbols[i];
        m_out << (i ? ", " : "") << "{\"symbology\": " << Utf8(SymbologyNames::Name(symbol.symbology))
              << ", \"dataType\": " << symbol.dataType << ", \"eci\": " << symbol.eci
              << ", \"text\": " << TextOrNull(symbol.text)
              << ", \"length\": " << symbol.bytes.size() << ", \"data\": \""
              << TextEncoding::Base64(symbol.bytes) << "\"}";
    }
    m_out << "]";
    if (verdict) {
        m_out << ", \"expected\": \"" << ExpectationCheck::Name(*verdict) << '"';
    }
    m_out << "}";
    m_out.flush();
}

void JsonWriter::End(const DecodeStatistics::Texts& statistics, const ExpectationSummary* summary) {
    m_out << (m_first ? "]" : "\n  ]")
          << ",\n  \"statistics\": {\"averageTime\": " << Latin1(statistics.averageTime)
          << ", \"imageCount\": " << Latin1(statistics.imageCount)
          << ", \"symbolsCount\": " << Latin1(statistics.symbolsCount)
          << ", \"averageImageProcessTime\": " << Latin1(statistics.averageImageProcessTime) << "}";
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
    m_out << "\n}\n";
    m_out.flush();
}
