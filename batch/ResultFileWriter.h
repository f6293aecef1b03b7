// Writes result files into an output folder, named after the image and the plug-in: the row's
// bytes as "<image>.<plug-in>.bin" (as Save Data as Binary writes them) and, when the reader's
// AAMVA parser accepts the bytes, "<image>.<plug-in>.aamva.txt" and ".aamva.xml" (the AAMVA
// dialog's exports). Rows without bytes write nothing. Used by one thread.
#pragma once

#include "AAMVAParseResult.h"
#include "BatchRow.h"
#include "ImageInput.h"

#include <string>
#include <vector>

class ResultFileWriter {
public:
    explicit ResultFileWriter(std::string folder) : m_folder(std::move(folder)) {}

    // Writes the files of one row; returns one error line for each file that could not be written.
    std::vector<std::string> Write(const ImageInput& input, const BatchRow& row);

    // The name every file of that row starts with, inside the folder.
    std::string BasePath(const ImageInput& input, const BatchRow& row) const;

private:
    std::string m_folder;
    AAMVAParseResult m_parse;
};
