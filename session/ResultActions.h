// The two actions of a results row's context menu: write the row's decoded bytes to a file, or
// have the reader library parse them as AAMVA card data and show the parsed record.
#pragma once

#include "GLD_DecodeData.h"
#include "SessionView.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// Shows one parsed AAMVA record. Made per action and destroyed after it, which frees the record.
class AamvaViewer {
public:
    virtual ~AamvaViewer() = default;
    // Parses the bytes (the parser starts on first use); 0 or the library's error code.
    virtual int32_t Parse(const uint8_t* bytes, int32_t length) = 0;
    // Shows the parsed record and returns when the user closes it.
    virtual void ShowModal() = 0;
};

// What the actions need of the user interface besides message boxes.
class ResultActionUi {
public:
    virtual ~ResultActionUi() = default;
    // The file the user chose to save the bytes to; empty when cancelled.
    virtual std::string AskBinarySavePath() = 0;
    virtual std::unique_ptr<AamvaViewer> MakeAamvaViewer() = 0;
};

class ResultActions {
public:
    ResultActions(SessionView& view, ResultActionUi& ui) : m_view(view), m_ui(ui) {}

    // data: the selected row's decoded bytes, none when no row is selected.
    void SaveDataAsBinary(const std::optional<GLD_DecodeData>& data);
    void ParseAsAamva(const std::optional<GLD_DecodeData>& data);

    // The row whose data the actions use: the last of the selected rows, -1 for none.
    template <typename IsSelected> static int LastSelectedRow(int rowCount, IsSelected isSelected) {
        int last = -1;
        for (int row = 0; row < rowCount; ++row) {
            if (isSelected(row)) {
                last = row;
            }
        }
        return last;
    }

    static constexpr const char* kNoDataText = "There is not data available for this result";
    static constexpr const char* kSavedText = "Successfully saved data to ";
    static constexpr const char* kParseFailedFormat =
        "Cannot parse data. Check that it is in an AAMVA data format. Error code: %d";

    // Creates or truncates path and writes the bytes; on failure returns why, else empty. The
    // window's "Save Data as Binary..." and glyphor-batch's result files both write this way.
    static std::string WriteFile(const std::string& path, const char* bytes, size_t length);

private:
    bool HasData(const std::optional<GLD_DecodeData>& data);

    SessionView& m_view;
    ResultActionUi& m_ui;
};
