#include "SymbolExtras.h"

#include <stdexcept>
#include <vector>

namespace glyphor::samples {
namespace {

const char* const kOdd[10] = {"0001101", "0011001", "0010011", "0111101", "0100011",
                              "0110001", "0101111", "0111011", "0110111", "0001011"};
const char* const kEven[10] = {"0100111", "0110011", "0011011", "0100001", "0011101",
                               "0111001", "0000101", "0010001", "0001001", "0010111"};
// Parity of the five digits of a 5-digit add-on for each check value; 'E' marks even parity.
const char* const kFiveParity[10] = {"EEOOO", "EOEOO", "EOOEO", "EOOOE", "OEEOO",
                                     "OOEEO", "OOOEE", "OEOEO", "OEOOE", "OOEOE"};

void append(std::vector<bool>& row, const char* modules) {
    for (const char* m = modules; *m; ++m)
        row.push_back(*m == '1');
}

} // namespace

ZXing::BitMatrix withAddOn(const ZXing::BitMatrix& main, const std::string& digits) {
    std::string parity;
    if (digits.size() == 2) {
        const int value = (digits[0] - '0') * 10 + (digits[1] - '0');
        parity = std::string(value % 4 < 2 ? "O" : "E") + (value % 2 ? "E" : "O");
    } else if (digits.size() == 5) {
        int check = 0;
        for (size_t i = 0; i < 5; ++i)
            check += (digits[i] - '0') * (i % 2 ? 9 : 3);
        parity = kFiveParity[check % 10];
    } else {
        throw std::invalid_argument("add-on of " + std::to_string(digits.size()) + " digits");
    }
    std::vector<bool> row;
    int last = 0;
    for (int x = 0; x < main.width(); ++x)
        if (main.get(x, 0))
            last = x;
    for (int x = 0; x <= last; ++x)
        row.push_back(main.get(x, 0));
    row.insert(row.end(), 9, false);
    append(row, "1011");
    for (size_t i = 0; i < digits.size(); ++i) {
        if (i > 0)
            append(row, "01");
        const int d = digits[i] - '0';
        append(row, parity[i] == 'E' ? kEven[d] : kOdd[d]);
    }
    row.insert(row.end(), 10, false);
    ZXing::BitMatrix out(int(row.size()), 1);
    for (size_t x = 0; x < row.size(); ++x)
        if (row[x])
            out.set(int(x), 0);
    return out;
}

namespace {

// Square single-region ECC 200 sizes: symbol size, data codewords, error codewords.
struct DmSize {
    int size, data, ecc;
};
const DmSize kDmSizes[] = {{10, 3, 5},   {12, 5, 7},   {14, 8, 10},  {16, 12, 12}, {18, 18, 14},
                           {20, 22, 18}, {22, 30, 20}, {24, 36, 24}, {26, 44, 28}};

// Reed-Solomon over GF(256), polynomial 0x12D, generator roots 2^1 .. 2^n.
std::vector<int> reedSolomon(const std::vector<int>& data, int n) {
    int exp[512], log[256] = {};
    int v = 1;
    for (int i = 0; i < 255; ++i) {
        exp[i] = exp[i + 255] = v;
        log[v] = i;
        v <<= 1;
        if (v & 0x100)
            v ^= 0x12D;
    }
    auto mul = [&](int a, int b) { return a && b ? exp[log[a] + log[b]] : 0; };
    std::vector<int> gen{1};
    for (int i = 1; i <= n; ++i) {
        std::vector<int> next(gen.size() + 1, 0);
        for (size_t k = 0; k < gen.size(); ++k) {
            next[k] ^= gen[k];
            next[k + 1] ^= mul(gen[k], exp[i]);
        }
        gen = next;
    }
    std::vector<int> ecc(size_t(n), 0);
    for (int d : data) {
        const int factor = d ^ ecc[0];
        ecc.erase(ecc.begin());
        ecc.push_back(0);
        for (int k = 0; k < n; ++k)
            ecc[size_t(k)] ^= mul(gen[size_t(k) + 1], factor);
    }
    return ecc;
}

// The standard module placement of codewords in the mapping matrix (rows x cols).
class Placement {
public:
    Placement(int rows, int cols) : rows_(rows), cols_(cols), bits_(size_t(rows * cols), -1) {}

    void place(const std::vector<int>& codewords) {
        codewords_ = &codewords;
        int pos = 0, row = 4, col = 0;
        do {
            if (row == rows_ && col == 0)
                corner(pos++, {{rows_ - 1, 0}, {rows_ - 1, 1}, {rows_ - 1, 2}, {0, cols_ - 2}, {0, cols_ - 1},
                               {1, cols_ - 1}, {2, cols_ - 1}, {3, cols_ - 1}});
            if (row == rows_ - 2 && col == 0 && cols_ % 4)
                corner(pos++, {{rows_ - 3, 0}, {rows_ - 2, 0}, {rows_ - 1, 0}, {0, cols_ - 4}, {0, cols_ - 3},
                               {0, cols_ - 2}, {0, cols_ - 1}, {1, cols_ - 1}});
            if (row == rows_ - 2 && col == 0 && cols_ % 8 == 4)
                corner(pos++, {{rows_ - 3, 0}, {rows_ - 2, 0}, {rows_ - 1, 0}, {0, cols_ - 2}, {0, cols_ - 1},
                               {1, cols_ - 1}, {2, cols_ - 1}, {3, cols_ - 1}});
            if (row == rows_ + 4 && col == 2 && !(cols_ % 8))
                corner(pos++, {{rows_ - 1, 0}, {rows_ - 1, cols_ - 1}, {0, cols_ - 3}, {0, cols_ - 2},
                               {0, cols_ - 1}, {1, cols_ - 3}, {1, cols_ - 2}, {1, cols_ - 1}});
            do {
                if (row < rows_ && col >= 0 && bits_[size_t(row * cols_ + col)] < 0)
                    utah(row, col, pos++);
                row -= 2;
                col += 2;
            } while (row >= 0 && col < cols_);
            row += 1;
            col += 3;
            do {
                if (row >= 0 && col < cols_ && bits_[size_t(row * cols_ + col)] < 0)
                    utah(row, col, pos++);
                row += 2;
                col -= 2;
            } while (row < rows_ && col >= 0);
            row += 3;
            col += 1;
        } while (row < rows_ || col < cols_);
        if (bits_[size_t(rows_ * cols_ - 1)] < 0)
            bits_[size_t(rows_ * cols_ - 1)] = bits_[size_t(rows_ * cols_ - cols_ - 2)] = 1;
    }

    bool dark(int row, int col) const { return bits_[size_t(row * cols_ + col)] == 1; }

private:
    void module(int row, int col, int pos, int bit) {
        if (row < 0) {
            row += rows_;
            col += 4 - ((rows_ + 4) % 8);
        }
        if (col < 0) {
            col += cols_;
            row += 4 - ((cols_ + 4) % 8);
        }
        const int value = size_t(pos) < codewords_->size() ? (*codewords_)[size_t(pos)] : 0;
        bits_[size_t(row * cols_ + col)] = (value >> (8 - bit)) & 1;
    }
    void utah(int row, int col, int pos) {
        const int r[8] = {row - 2, row - 2, row - 1, row - 1, row - 1, row, row, row};
        const int c[8] = {col - 2, col - 1, col - 2, col - 1, col, col - 2, col - 1, col};
        for (int b = 0; b < 8; ++b)
            module(r[b], c[b], pos, b + 1);
    }
    void corner(int pos, std::initializer_list<std::pair<int, int>> cells) {
        int b = 1;
        for (auto [r, c] : cells)
            module(r, c, pos, b++);
    }

    int rows_, cols_;
    std::vector<int> bits_;
    const std::vector<int>* codewords_ = nullptr;
};

} // namespace

ZXing::BitMatrix dataMatrixFromCodewords(const std::string& codewords) {
    const DmSize* size = nullptr;
    for (const DmSize& s : kDmSizes)
        if (int(codewords.size()) <= s.data) {
            size = &s;
            break;
        }
    if (!size)
        throw std::invalid_argument("too many codewords for a single-region DataMatrix");
    std::vector<int> words;
    for (unsigned char c : codewords)
        words.push_back(c);
    // Pad: 129 first, then 129 scrambled by position.
    for (int k = int(words.size()) + 1; int(words.size()) < size->data; ++k) {
        if (int(words.size()) == int(codewords.size())) {
            words.push_back(129);
            continue;
        }
        const int scrambled = 129 + ((149 * k) % 253) + 1;
        words.push_back(scrambled <= 254 ? scrambled : scrambled - 254);
    }
    const std::vector<int> ecc = reedSolomon(words, size->ecc);
    words.insert(words.end(), ecc.begin(), ecc.end());
    const int inner = size->size - 2;
    Placement placement(inner, inner);
    placement.place(words);
    ZXing::BitMatrix out(size->size, size->size);
    for (int i = 0; i < size->size; ++i) {
        out.set(0, i);                      // solid left edge
        out.set(i, size->size - 1);         // solid bottom edge
        if (i % 2 == 0)
            out.set(i, 0);                  // alternating top edge
        if (i % 2 == 1)
            out.set(size->size - 1, i);     // alternating right edge
    }
    for (int r = 0; r < inner; ++r)
        for (int c = 0; c < inner; ++c)
            if (placement.dark(r, c))
                out.set(c + 1, r + 1);
    return out;
}

std::string dataMatrixEciCodewords(const std::vector<std::pair<int, std::string>>& segments) {
    std::string out;
    for (const auto& [eci, bytes] : segments) {
        out += char(241);
        out += char(eci + 1);
        for (unsigned char b : bytes) {
            if (b >= 128) {
                out += char(235); // upper shift
                b = static_cast<unsigned char>(b - 128);
            }
            out += char(b + 1);
        }
    }
    return out;
}

} // namespace glyphor::samples
