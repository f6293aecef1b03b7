#include "AamvaBodyScanner.h"

#include "AamvaText.h"

namespace zyr {

AamvaBodyScanner::AamvaBodyScanner(std::string_view data, const AamvaHeader& header, AamvaRepairs& repairs)
    : data_(data), header_(header), repairs_(repairs), designatorUsed_(header.designators.size(), false) {}

bool AamvaBodyScanner::isSeparator(char c) const {
    return c == '\n' || c == '\r' || c == header_.elementSeparator || c == header_.segmentTerminator;
}

// CR directly followed by LF is one element separator (some capture software writes CR LF).
bool AamvaBodyScanner::isTerminatorAt(std::size_t at) const {
    const char c = data_[at];
    if (c == '\r')
        return !(at + 1 < data_.size() && data_[at + 1] == '\n');
    return c == header_.segmentTerminator && c != '\n' && c != header_.elementSeparator;
}

bool AamvaBodyScanner::elementIdAt(std::size_t at) const {
    return at + 3 <= data_.size() && AamvaText::isUpper(data_[at]) && AamvaText::isUpper(data_[at + 1]) &&
           AamvaText::isUpper(data_[at + 2]);
}

bool AamvaBodyScanner::subfileStartAt(std::size_t at) const {
    if (at + 5 > data_.size())
        return false;
    const std::string_view type = data_.substr(at, 2);
    if (type == "DL" || type == "ID" || type == "EN")
        return elementIdAt(at + 2);
    // "ZVZVA": the type, then the first jurisdiction element, whose ID repeats it.
    return type[0] == 'Z' && AamvaText::isUpper(type[1]) && data_.substr(at + 2, 2) == type &&
           AamvaText::isUpper(data_[at + 4]);
}

// A jurisdiction subfile glued to the last value ("...DDB09212009MZIZIC457"), recognised only
// for a type the header announced and that has not been seen yet.
bool AamvaBodyScanner::unopenedJurisdictionSubfileAt(std::size_t at) const {
    return data_[at] == 'Z' && ((subfileStartAt(at) && unusedDesignator(data_.substr(at, 2)) >= 0) ||
                                declaredJurisdictionElementAt(at));
}

// "...DDD1ZVA01": the first element of an announced jurisdiction subfile, without the subfile's
// type, glued to the last value; believed only within a few bytes of the declared offset.
bool AamvaBodyScanner::declaredJurisdictionElementAt(std::size_t at) const {
    if (!elementIdAt(at))
        return false;
    const int index = unusedDesignator(data_.substr(at, 2));
    if (index < 0)
        return false;
    const int32_t offset = header_.designators[static_cast<std::size_t>(index)].offset;
    const std::size_t declared = header_.start + static_cast<std::size_t>(offset < 0 ? 0 : offset);
    return offset > 0 && at + 2 >= declared && at <= declared + 4;
}

int AamvaBodyScanner::unusedDesignator(std::string_view type) const {
    for (std::size_t i = 0; i < header_.designators.size(); ++i)
        if (!designatorUsed_[i] && header_.designators[i].type == type)
            return static_cast<int>(i);
    return -1;
}

// Once every announced subfile has been read and properly ended, only another subfile may
// follow; anything else is trailing junk from the scanner.
bool AamvaBodyScanner::finished(const AamvaBody& body) const {
    if (body.subfiles.empty() || !body.subfiles.back().terminated || header_.designators.empty())
        return false;
    for (bool used : designatorUsed_)
        if (!used)
            return false;
    return true;
}

void AamvaBodyScanner::openSubfile(AamvaBody& body, std::string_view type, std::size_t start, bool prefixed) {
    AamvaSubfile subfile;
    subfile.type = std::string(type);
    subfile.start = start;
    subfile.prefixed = prefixed;
    subfile.designator = unusedDesignator(type);
    if (subfile.designator >= 0)
        designatorUsed_[static_cast<std::size_t>(subfile.designator)] = true;
    body.subfiles.push_back(std::move(subfile));
}

std::size_t AamvaBodyScanner::readElement(AamvaBody& body, std::size_t at, bool subfileJustOpened) {
    const std::string_view id = data_.substr(at, 3);
    if (!subfileJustOpened) {
        if (body.subfiles.empty()) {
            // Data that starts straight with an element: take the first announced type.
            const int first = header_.designators.empty() ? -1 : 0;
            openSubfile(body, first < 0 ? std::string_view("DL") : header_.designators[0].type, at, false);
        } else if (id[0] == 'Z' && body.subfiles.back().type != id.substr(0, 2) &&
                   unusedDesignator(id.substr(0, 2)) >= 0) {
            openSubfile(body, id.substr(0, 2), at, false);
        }
    }
    std::size_t end = at + 3;
    // The cheap test first: this loop runs over every byte of every value.
    while (end < data_.size() && !isSeparator(data_[end]) &&
           !(data_[end] == 'Z' && unopenedJurisdictionSubfileAt(end)))
        ++end;
    AamvaElement element;
    element.id = std::string(id);
    element.value = std::string(data_.substr(at + 3, end - at - 3));
    element.subfile = static_cast<int>(body.subfiles.size()) - 1;
    body.elements.push_back(std::move(element));
    body.subfiles.back().terminated = end < data_.size() && isTerminatorAt(end);
    body.end = end;
    return end;
}

AamvaBody AamvaBodyScanner::scan() {
    AamvaBody body;
    std::size_t p = header_.bodyStart;
    const std::size_t n = data_.size();
    while (p < n) {
        const char c = data_[p];
        if (isSeparator(c) || c == ' ' || c == '\t' || c == '\0') {
            ++p;
            continue;
        }
        const bool newSubfile = subfileStartAt(p);
        if (!newSubfile && finished(body))
            break;
        if (newSubfile) {
            openSubfile(body, data_.substr(p, 2), p, true);
            p += 2;
        }
        if (!elementIdAt(p)) {
            // Not an element: skip to the next separator.
            while (p < n && !isSeparator(data_[p]))
                ++p;
            continue;
        }
        p = readElement(body, p, newSubfile);
    }
    removeTypedTerminators(body);
    return body;
}

// A keyboard-wedge scanner types each segment terminator as "M", glued to the last value of its
// subfile; some issuers glue one to a closing date too. Only where nothing else ended the subfile,
// and in general only after a date, because "M" also ends ordinary values.
void AamvaBodyScanner::removeTypedTerminators(AamvaBody& body) {
    bool unterminated = false;
    for (const AamvaSubfile& subfile : body.subfiles)
        unterminated = unterminated || !subfile.terminated;
    if (!unterminated)
        return;
    const bool wedge =
        header_.terminatorTyped && data_.find('\r', header_.bodyStart) == std::string_view::npos;
    for (std::size_t i = 0; i < body.elements.size(); ++i) {
        AamvaElement& e = body.elements[i];
        AamvaSubfile& subfile = body.subfiles[static_cast<std::size_t>(e.subfile)];
        const bool lastOfSubfile = i + 1 == body.elements.size() || body.elements[i + 1].subfile != e.subfile;
        if (!lastOfSubfile || subfile.terminated || e.value.empty() || e.value.back() != 'M')
            continue;
        const bool afterDate =
            e.value.size() == 9 && AamvaText::allDigits(std::string_view(e.value).substr(0, 8));
        if (!wedge && !afterDate)
            continue;
        e.value.pop_back();
        subfile.terminated = true;
        repairs_.note("subfile %s ends with a terminator typed as M after %s", subfile.type.c_str(),
                      e.id.c_str());
    }
}

} // namespace zyr
