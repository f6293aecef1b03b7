#include "ExportTestSupport.h"

#include <cstdio>

const std::string kData = GLYPHOR_AAMVA_TEST_DATA;

std::string XmlProblems(const std::string& path) {
    const std::string command = std::string("'") + GLYPHOR_XMLLINT + "' --noout '" + path + "' 2>&1";
    std::string output;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, pipe))
            output += buffer;
        if (pclose(pipe) != 0 && output.empty())
            output = "xmllint failed";
    } else {
        output = "xmllint could not be started";
    }
    return output;
}

bool HasLine(const std::string& file, const std::string& line) {
    return file.find("\r\n" + line + "\r\n") != std::string::npos;
}
