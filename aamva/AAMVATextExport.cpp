#include "AAMVATextExport.h"

#include "AAMVAFields.h"
#include "AAMVAFormat.h"
#include "StringBuffer.h"
#include "StringBufferList.h"

#include <exception>

namespace {

// Every byte of the value: the counted append would drop a final NUL (a NUL ShortSex).
void Append(StringBuffer& line, const std::string& text) {
    if (text.empty())
        return;
    line.append(text.data(), static_cast<uint32_t>(text.size()));
    if (text.back() == '\0')
        line.appendNOfChar(1, 0);
}

StringBuffer Line(const std::string& first, const std::string& second) {
    StringBuffer line;
    Append(line, first);
    line += '\t';
    Append(line, second);
    return line;
}

StringBuffer Line(const std::string& first, const std::string& second, const std::string& third) {
    StringBuffer line = Line(first, second);
    line += '\t';
    Append(line, third);
    return line;
}

// The counted append drops a final NUL byte; the raw line must keep every byte.
StringBuffer RawLine(const uint8_t* raw, int32_t length) {
    StringBuffer line;
    if (raw == nullptr || length <= 0)
        return line;
    line.append(reinterpret_cast<const char*>(raw), static_cast<uint32_t>(length));
    if (raw[length - 1] == 0)
        line.appendNOfChar(1, 0);
    return line;
}

} // namespace

void AAMVATextExport::BuildLines(const AAMVARecord& r, const uint8_t* raw, int32_t rawLength,
                                 StringBufferList& lines) {
    lines.Add(StringBuffer("<AAMVA>"));
    lines.Add(RawLine(raw, rawLength));
    lines.Add(StringBuffer("</AAMVA>"));
    lines.Add(StringBuffer());

    lines.Add(StringBuffer("Header Values"));
    lines.Add(StringBuffer("============="));
    lines.Add(Line("FileType", AAMVA_FIELD(r.FileType)));
    lines.Add(Line("IIN", AAMVA_FIELD(r.IIN)));
    lines.Add(Line("IssuerName", AAMVA_FIELD(r.IssuerName)));
    lines.Add(Line("Version", AAMVAFormat::Number(r.Version),
                   AAMVAFormat::VersionText(r, AAMVAFormat::StandardVersion)));
    // The absence note is for the screen only.
    lines.Add(Line("JurisdictionVersion", AAMVAFormat::Number(r.JurisdictionVersion)));
    lines.Add(StringBuffer());

    lines.Add(StringBuffer("SDK Parsed Values"));
    lines.Add(StringBuffer("================="));
    for (const AAMVARow& row : AAMVAFields::Identity(r))
        lines.Add(Line(row.name, row.value));
    lines.Add(StringBuffer());

    lines.Add(StringBuffer("All Data Items"));
    lines.Add(StringBuffer("=============="));
    for (const AAMVARow& item : AAMVAFields::DataItems(r))
        lines.Add(Line(item.id, item.name, item.value));
}

bool AAMVATextExport::Save(const AAMVARecord& record, const uint8_t* raw, int32_t rawLength,
                           const std::string& path, std::string* error) {
    bool saved = false;
    try {
        StringBufferList lines;
        BuildLines(record, raw, rawLength, lines);
        saved = lines.SaveToFile(StringBuffer(path.c_str()), false, false);
    } catch (const std::exception&) {
        saved = false;
    }
    if (!saved && error != nullptr)
        *error = "Failed to save data as text to " + path;
    return saved;
}
