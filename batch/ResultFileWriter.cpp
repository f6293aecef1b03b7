#include "ResultFileWriter.h"

#include "AAMVATextExport.h"
#include "AAMVAXmlExport.h"
#include "ResultActions.h"

#include <filesystem>
#include <limits>

namespace fs = std::filesystem;

std::string ResultFileWriter::BasePath(const ImageInput& input, const BatchRow& row) const {
    return (fs::path(m_folder) / fs::path(input.outputName)).string() + "." + row.row.pluginName;
}

std::vector<std::string> ResultFileWriter::Write(const ImageInput& input, const BatchRow& row) {
    std::vector<std::string> errors;
    if (row.data.empty()) {
        return errors;
    }
    const std::string base = BasePath(input, row);
    std::error_code folderError;
    fs::create_directories(fs::path(base).parent_path(), folderError);
    if (folderError) {
        errors.push_back("cannot create folder '" + fs::path(base).parent_path().string() +
                         "': " + folderError.message());
        return errors;
    }
    const std::string binPath = base + ".bin";
    const std::string failure = ResultActions::WriteFile(binPath, row.data.data(), row.data.size());
    if (!failure.empty()) {
        errors.push_back("cannot write '" + binPath + "': " + failure);
    }
    if (row.data.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()) ||
        m_parse.Parse(reinterpret_cast<const uint8_t*>(row.data.data()),
                      static_cast<int32_t>(row.data.size())) != ZYR_OK) {
        return errors; // not AAMVA data: only the bytes
    }
    std::string error;
    if (!AAMVATextExport::Save(*m_parse.Record(), m_parse.RawData(), m_parse.RawLength(), base + ".aamva.txt",
                               &error)) {
        errors.push_back(error);
    }
    if (!AAMVAXmlExport::Save(*m_parse.Record(), base + ".aamva.xml", &error)) {
        errors.push_back(error);
    }
    return errors;
}
