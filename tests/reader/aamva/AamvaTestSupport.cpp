#include "AamvaTestSupport.h"

#include "AamvaParser.h"

ParsedRecord parseRecord(const std::string& bytes) {
    ParsedRecord out;
    zyr::AamvaDocument document;
    out.code =
        zyr::AamvaParser::parse(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), document);
    if (out.code == ZYR_OK)
        out.record = zyr::AamvaRecordBuilder::build(document);
    return out;
}

std::ostream& operator<<(std::ostream& out, const AAMVADate& d) {
    return out << "{day " << d.Day << ", month " << d.Month << ", year " << d.Year << "}";
}

std::ostream& operator<<(std::ostream& out, const AAMVAMeasure& m) {
    return out << "{" << m.Value << ", unit " << m.Unit << "}";
}

AAMVADate date(uint32_t year, uint32_t month, uint32_t day) {
    return {day, month, year};
}

std::string itemList(const AAMVARecord& record) {
    std::string out;
    for (int32_t i = 0; i < record.DataItemCount; ++i) {
        if (i)
            out += "|";
        out += std::string(record.DataItems[i].ID) + "=" + record.DataItems[i].Value;
    }
    return out;
}
