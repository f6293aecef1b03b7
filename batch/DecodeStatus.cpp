#include "DecodeStatus.h"

#include "EciText.h"
#include "TextEncoding.h"
#include "ZyrReaderLowLevelAPI.h"

namespace {

const std::string kNoData = kNoDataText;

} // namespace

const char* DecodeStatus::Name(const DecodeOutcome& outcome) {
    switch (outcome.Status()) {
    case OutcomeStatus::Read:
    case OutcomeStatus::NoData:
        return "ok";
    case OutcomeStatus::Crashed:
        return "crashed";
    case OutcomeStatus::TimedOut:
        return "timed out";
    case OutcomeStatus::Failed:
        break;
    }
    return "failed";
}

std::string DecodeStatus::ResultsText(const ResultRow& row) {
    const OutcomeStatus status = row.outcome.Status();
    const char* replacement = status == OutcomeStatus::Crashed    ? "[CRASHED]"
                              : status == OutcomeStatus::TimedOut ? "[TIMED OUT]"
                                                                  : nullptr;
    const std::string& text = row.results;
    // Two-sided rows carry their side in front of the text.
    if (!replacement || text.size() < kNoData.size() ||
        text.compare(text.size() - kNoData.size(), kNoData.size(), kNoData) != 0)
        return text;
    return text.substr(0, text.size() - kNoData.size()) + replacement;
}

std::string DecodeStatus::ResultsUtf8(const ResultRow& row) {
    const std::string text = ResultsText(row);
    if (row.resultsEci != 0 && row.resultsEci != ZYR_ECI_ISO8859_1) {
        if (std::optional<std::string> utf8 = EciText::ToUtf8(text, row.resultsEci)) {
            return *utf8;
        }
    }
    return TextEncoding::Latin1ToUtf8(text);
}
