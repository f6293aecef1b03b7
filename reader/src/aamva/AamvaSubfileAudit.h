// Compares the subfiles found in the data with what the header declares. Real cards get offsets
// and lengths wrong in many ways, so the header is believed only where it agrees with the data:
// the audit notes each disagreement and decides whether the data was cut off.
#ifndef ZYR_AAMVA_SUBFILE_AUDIT_H
#define ZYR_AAMVA_SUBFILE_AUDIT_H

#include "AamvaBody.h"
#include "AamvaHeader.h"
#include "AamvaRepairs.h"

#include <string_view>

namespace zyr {

class AamvaSubfileAudit {
public:
    AamvaSubfileAudit(std::string_view data, const AamvaHeader& header, const AamvaBody& body);

    // The data ends inside an element, and a header that agrees with the data says that the last
    // subfile runs on; or it stops a few bytes into a subfile the header announced.
    bool cut() const;

    // One line per subfile found away from its declared offset, with another length, without its
    // type or terminator, or not declared; and one per declared subfile that is absent.
    void noteDeviations(AamvaRepairs& repairs) const;

private:
    std::size_t typeAt(const AamvaSubfile& subfile) const;
    std::size_t declaredAt(const AamvaDesignator& designator) const;
    std::size_t actualLength(std::size_t subfile) const;
    const AamvaDesignator* designatorOf(const AamvaSubfile& subfile) const;
    bool headerAgrees() const;
    bool endsInsideElement() const;
    bool endsInAnnouncedSubfile() const;

    std::string_view data_;
    const AamvaHeader& header_;
    const AamvaBody& body_;
};

} // namespace zyr

#endif
