// Judging results against expected texts, and the per-plug-in summary.
#include "ExpectationCheck.h"
#include "ExpectationSummary.h"

#include <gtest/gtest.h>

namespace {

// Symbols holding these bytes; with an ECI, bytes in the character set it names.
std::vector<DecodedSymbol> Symbols(std::initializer_list<std::string> payloads, int32_t eci = ZYR_ECI_NONE) {
    std::vector<DecodedSymbol> symbols;
    for (const std::string& payload : payloads) {
        DecodedSymbol s;
        s.bytes = payload;
        if (eci != ZYR_ECI_NONE) {
            s.dataType = ZYR_DATA_ECI_BYTES;
            s.eci = eci;
        }
        symbols.push_back(s);
    }
    return symbols;
}

TEST(ExpectationCheck, Verdicts) {
    const std::string binary("GLY\0\x01\x02\xff\x80\x00\x7f" "END\n", 14);
    struct Case {
        const char* name;
        std::optional<std::string> expected;
        std::vector<DecodedSymbol> symbols;
        Verdict verdict;
    };
    const Case cases[] = {
        {"exact", "GLYPHOR 42", Symbols({"GLYPHOR 42"}), Verdict::Pass},
        {"binary payload ending in a line feed", binary, Symbols({binary}), Verdict::Pass},
        {"two symbols in file order", "FIRST\nSECOND", Symbols({"FIRST", "SECOND"}), Verdict::Pass},
        {"two symbols in the other order", "FIRST\nSECOND", Symbols({"SECOND", "FIRST"}), Verdict::Pass},
        {"symbols holding line feeds", "A\nB\nC", Symbols({"B\nC", "A"}), Verdict::Pass},
        {"hand-written file with a final LF", "GLYPHOR 42\n", Symbols({"GLYPHOR 42"}), Verdict::Pass},
        {"hand-written file with a final CR LF", "GLYPHOR 42\r\n", Symbols({"GLYPHOR 42"}), Verdict::Pass},
        {"empty file, nothing read", "", Symbols({}), Verdict::Pass},
        {"empty file with a line end, nothing read", "\n", Symbols({}), Verdict::Pass},
        {"wrong bytes", "GLYPHOR 42", Symbols({"GLYPHOR 43"}), Verdict::Misread},
        {"symbol found in an empty-image file", "", Symbols({"X"}), Verdict::Misread},
        {"an extra symbol", "A", Symbols({"A", "B"}), Verdict::Misread},
        {"the same symbol twice", "A", Symbols({"A", "A"}), Verdict::Misread},
        {"one symbol twice of two", "A\nA\nB", Symbols({"A", "A"}), Verdict::Miss},
        {"nothing read", "GLYPHOR 42", Symbols({}), Verdict::Miss},
        {"one of two read", "FIRST\nSECOND", Symbols({"SECOND"}), Verdict::Miss},
        {"no file", std::nullopt, Symbols({"A"}), Verdict::Unchecked},
        {"text file, symbol in Shift_JIS", "\xe6\x97\xa5\xe6\x9c\xac",
         Symbols({"\x93\xfa\x96\x7b"}, ZYR_ECI_SHIFT_JIS), Verdict::Pass},
        {"text file, two symbols as text", "A\n\xe6\x97\xa5", Symbols({"A", "\x93\xfa"}, ZYR_ECI_SHIFT_JIS),
         Verdict::Pass},
        {"text file, wrong text", "\xe6\x97\xa5", Symbols({"\x96\x7b"}, ZYR_ECI_SHIFT_JIS), Verdict::Misread},
        {"Latin-1 file is bytes, not text", "Gr\xfc", Symbols({"Gr\xc3\xbc"}, ZYR_ECI_UTF8),
         Verdict::Misread},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ExpectationCheck::Judge(c.expected, c.symbols), c.verdict)
            << c.name << ": got " << ExpectationCheck::Name(ExpectationCheck::Judge(c.expected, c.symbols));
    }
}

} // namespace
