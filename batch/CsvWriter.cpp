#include "CsvWriter.h"

#include "DecodeStatus.h"
#include "SymbologyNames.h"
#include "TextEncoding.h"

void CsvWriter::Begin() {
    // CR LF line ends, as RFC 4180 has them.
    m_out << "File name,Plugin,Img Process,Time,Results,Symbology,ECI,Symbols,Length,Data (base64),Status,Text"
          << (m_expect ? ",Expected\r\n" : "\r\n");
}

void CsvWriter::Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) {
    const std::vector<DecodedSymbol>& symbols = row.outcome().symbols;
    const bool any = !symbols.empty();
    m_out << TextEncoding::CsvField(input.display) << ',' << TextEncoding::CsvField(row.row.pluginName) << ','
          << TextEncoding::CsvField(row.row.imageProcess) << ',' << TextEncoding::CsvField(row.row.time)
          << ',' << TextEncoding::CsvField(DecodeStatus::ResultsUtf8(row.row)) << ','
          << (any ? TextEncoding::CsvField(SymbologyNames::Name(symbols.back().symbology)) : "") << ','
          << (any ? std::to_string(symbols.back().eci) : "") << ',' << symbols.size() << ','
          << row.data.size() << ',' << TextEncoding::Base64(row.data) << ','
          << TextEncoding::CsvField(DecodeStatus::Name(row.outcome())) << ','
          << TextEncoding::CsvField(RowText(row).value_or(""));
    if (m_expect) {
        m_out << ',' << (verdict ? ExpectationCheck::Name(*verdict) : "");
    }
    m_out << "\r\n";
    m_out.flush();
}

void CsvWriter::End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) {
    m_out.flush();
    for (const std::string& line : StatisticsLines(statistics)) {
        m_notes << line << '\n';
    }
    if (summary) {
        for (const std::string& line : summary->TableLines()) {
            m_notes << line << '\n';
        }
    }
    m_notes.flush();
}
