#include "AamvaSubfileAudit.h"

#include <vector>

namespace zyr {
namespace {

long distance(std::size_t a, std::size_t b) {
    return static_cast<long>(a) - static_cast<long>(b);
}

long magnitude(long value) {
    return value < 0 ? -value : value;
}

} // namespace

AamvaSubfileAudit::AamvaSubfileAudit(std::string_view data, const AamvaHeader& header, const AamvaBody& body)
    : data_(data), header_(header), body_(body) {}

// Where the subfile's type stands. A card that left the type out may have declared the subfile
// with or without it; the position nearer the declared one is taken.
std::size_t AamvaSubfileAudit::typeAt(const AamvaSubfile& subfile) const {
    if (subfile.prefixed || subfile.start < 2)
        return subfile.start;
    const AamvaDesignator* d = designatorOf(subfile);
    if (d != nullptr && d->offset >= 0 &&
        magnitude(distance(subfile.start, declaredAt(*d))) <
            magnitude(distance(subfile.start - 2, declaredAt(*d))))
        return subfile.start;
    return subfile.start - 2;
}

std::size_t AamvaSubfileAudit::declaredAt(const AamvaDesignator& designator) const {
    return header_.start + static_cast<std::size_t>(designator.offset < 0 ? 0 : designator.offset);
}

// Up to the next subfile; the last one up to its last value and the separator after it.
std::size_t AamvaSubfileAudit::actualLength(std::size_t index) const {
    const std::size_t start = typeAt(body_.subfiles[index]);
    if (index + 1 < body_.subfiles.size())
        return typeAt(body_.subfiles[index + 1]) - start;
    std::size_t end = body_.end;
    if (end < data_.size()) {
        const char c = data_[end];
        end +=
            c == '\r' || c == '\n' || c == header_.elementSeparator || c == header_.segmentTerminator ? 1 : 0;
    }
    return end > start ? end - start : 0;
}

const AamvaDesignator* AamvaSubfileAudit::designatorOf(const AamvaSubfile& subfile) const {
    return subfile.designator < 0 ? nullptr
                                  : &header_.designators[static_cast<std::size_t>(subfile.designator)];
}

// Every declared subfile stands where it was declared, give or take the byte or two a mangled
// header adds or loses, and each but the last is as long as declared.
bool AamvaSubfileAudit::headerAgrees() const {
    bool first = true;
    long firstShift = 0;
    for (std::size_t i = 0; i < body_.subfiles.size(); ++i) {
        const AamvaDesignator* d = designatorOf(body_.subfiles[i]);
        if (d == nullptr)
            continue;
        if (d->offset < 0)
            return false;
        const long shift = distance(typeAt(body_.subfiles[i]), declaredAt(*d));
        if (first ? magnitude(shift) > 2 : magnitude(shift - firstShift) > 1)
            return false;
        if (first)
            firstShift = shift;
        first = false;
        if (i + 1 < body_.subfiles.size() &&
            (d->length < 0 || magnitude(distance(actualLength(i), static_cast<std::size_t>(d->length))) > 1))
            return false;
    }
    return !first;
}

bool AamvaSubfileAudit::endsInsideElement() const {
    const char c = data_.back();
    return !(c == '\r' || c == '\n' || c == '\0' || c == header_.elementSeparator ||
             c == header_.segmentTerminator);
}

// The data stops a few bytes into a subfile the header announced ("Z", "ZV", "ZVZV").
bool AamvaSubfileAudit::endsInAnnouncedSubfile() const {
    std::string_view rest = data_.substr(body_.end < data_.size() ? body_.end : data_.size());
    while (!rest.empty() &&
           (rest.front() == ' ' || rest.front() == '\t' || rest.front() == '\0' || rest.front() == '\r' ||
            rest.front() == '\n' || rest.front() == header_.elementSeparator ||
            rest.front() == header_.segmentTerminator))
        rest.remove_prefix(1);
    if (rest.empty() || rest.size() >= 5)
        return false;
    std::vector<bool> seen(header_.designators.size(), false);
    for (const AamvaSubfile& s : body_.subfiles)
        if (s.designator >= 0)
            seen[static_cast<std::size_t>(s.designator)] = true;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const std::string& type = header_.designators[i].type;
        if (!seen[i] && (type + type).compare(0, rest.size(), rest) == 0)
            return true;
    }
    return false;
}

// One byte of slack allows for a scanner that drops the final CR.
bool AamvaSubfileAudit::cut() const {
    if (body_.subfiles.empty() || data_.empty())
        return false;
    if (endsInAnnouncedSubfile())
        return true;
    const AamvaSubfile& last = body_.subfiles.back();
    const AamvaDesignator* d = designatorOf(last);
    if (last.terminated || d == nullptr || d->length < 0 || !endsInsideElement() || !headerAgrees())
        return false;
    return typeAt(last) + static_cast<std::size_t>(d->length) > data_.size() + 1;
}

void AamvaSubfileAudit::noteDeviations(AamvaRepairs& repairs) const {
    for (std::size_t i = 0; i < body_.subfiles.size(); ++i) {
        const AamvaSubfile& s = body_.subfiles[i];
        const char* type = s.type.c_str();
        const AamvaDesignator* d = designatorOf(s);
        if (d == nullptr) {
            repairs.note("subfile %s not declared in the header", type);
        } else {
            const std::size_t at = typeAt(s) - (typeAt(s) >= header_.start ? header_.start : 0);
            if (d->offset < 0)
                repairs.note("subfile %s at offset %zu, declared offset not a number", type, at);
            else if (at != static_cast<std::size_t>(d->offset))
                repairs.note("subfile %s at offset %zu, declared at %d", type, at,
                             static_cast<int>(d->offset));
            if (d->length >= 0 && actualLength(i) != static_cast<std::size_t>(d->length))
                repairs.note("subfile %s is %zu bytes long, declared %d", type, actualLength(i),
                             static_cast<int>(d->length));
        }
        if (!s.prefixed)
            repairs.note("subfile %s without its type", type);
        if (!s.terminated)
            repairs.note("subfile %s without a segment terminator", type);
    }
    for (std::size_t i = 0; i < header_.designators.size(); ++i) {
        bool found = false;
        for (const AamvaSubfile& s : body_.subfiles)
            found = found || s.designator == static_cast<int>(i);
        if (!found)
            repairs.note("subfile %s declared but absent", header_.designators[i].type.c_str());
    }
}

} // namespace zyr
