// How bytes and 8-bit text are written into the table, CSV and JSON outputs. The session's
// texts are 8-bit and read as ISO-8859-1, as the window shows them; file names are UTF-8.
#pragma once

#include <string>

class TextEncoding {
public:
    // Standard base64 with "=" padding.
    static std::string Base64(const std::string& bytes);

    static std::string Latin1ToUtf8(const std::string& text);

    // One cell of a table, on one line: control bytes as \r, \n, \t, \0 or \xNN; with latin1
    // the other bytes are read as ISO-8859-1 and written as UTF-8, otherwise kept.
    static std::string TableText(const std::string& text, bool latin1);

    // Columns a UTF-8 text takes on a terminal, counting one per character.
    static size_t DisplayWidth(const std::string& utf8);

    // A quoted JSON string, ASCII only. latin1: the text is 8-bit; otherwise it is UTF-8, whose
    // characters are kept, and a byte that is not part of valid UTF-8 is read as ISO-8859-1.
    static std::string JsonString(const std::string& text, bool latin1);

    // A CSV field: quoted (with doubled quotes) when it holds a comma, quote, CR or LF, or starts
    // or ends with a space.
    static std::string CsvField(const std::string& text);
};
