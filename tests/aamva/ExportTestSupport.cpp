#include "ExportTestSupport.h"

#include "TempFolder.h"

#include <cstdio>
#include <cstdlib>

const std::string kData = GLYPHOR_AAMVA_TEST_DATA;

std::string XmlProblems(const std::string& path) {
    const std::string log = path + ".xmllint";
    const std::string command =
        std::string("'") + GLYPHOR_XMLLINT + "' --noout '" + path + "' >'" + log + "' 2>&1";
    const int status = std::system(command.c_str());
    const std::string output = readFile(log);
    std::remove(log.c_str());
    return status == 0 ? "" : output.empty() ? "xmllint failed" : output;
}

bool HasLine(const std::string& file, const std::string& line) {
    return file.find("\r\n" + line + "\r\n") != std::string::npos;
}
