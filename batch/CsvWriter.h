// One CSV line per row after a header line, the list's five columns first, then the symbology,
// ECI, symbol count, byte count and the bytes in base64. Standard output stays pure CSV: the
// statistics and the summary go to the second stream.
#pragma once

#include "ResultWriter.h"

#include <ostream>

class CsvWriter : public ResultWriter {
public:
    // expect: results are compared, and an "Expected" column holds each row's verdict.
    CsvWriter(std::ostream& out, std::ostream& notes, bool expect)
        : m_out(out), m_notes(notes), m_expect(expect) {}

    void Begin() override;
    void Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) override;
    void End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) override;

private:
    std::ostream& m_out;
    std::ostream& m_notes;
    bool m_expect;
};
