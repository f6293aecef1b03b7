#include "RunFile.h"

#include "JsonValue.h"

#include <fstream>
#include <iterator>

namespace {

std::string StringOr(const JsonValue& object, const char* name, const std::string& fallback) {
    const JsonValue* value = object.Find(name);
    return value && value->IsString() ? value->string : fallback;
}

double NumberOr(const JsonValue& object, const char* name, double fallback) {
    const JsonValue* value = object.Find(name);
    return value && value->IsNumber() ? value->number : fallback;
}

size_t Count(const JsonValue& object, const char* name) {
    const double value = NumberOr(object, name, 0);
    return value > 0 && value < 1e15 ? static_cast<size_t>(value) : 0;
}

void ReadSymbols(const JsonValue& row, RunRow& out) {
    const JsonValue* symbols = row.Find("symbols");
    if (!symbols || symbols->type != JsonValue::Type::Array) {
        return;
    }
    for (const JsonValue& symbol : symbols->items) {
        RunSymbol s;
        s.symbology = StringOr(symbol, "symbology", "");
        const JsonValue* corners = symbol.Find("corners");
        if (corners && corners->items.size() == s.corners.size()) {
            for (size_t i = 0; i < s.corners.size(); ++i) {
                const std::vector<JsonValue>& xy = corners->items[i].items;
                if (xy.size() == 2 && xy[0].IsNumber() && xy[1].IsNumber()) {
                    s.corners[i] = {xy[0].number, xy[1].number};
                }
            }
        }
        out.symbols.push_back(std::move(s));
    }
}

bool ReadRow(const JsonValue& row, size_t position, const std::string& text, RunRow& out,
             std::string& error) {
    const JsonValue* plugin = row.Find("plugin");
    const JsonValue* file = row.Find("file");
    if (row.type != JsonValue::Type::Object || !plugin || !plugin->IsString() || !file || !file->IsString()) {
        error = "row " + std::to_string(position + 1) + " has no \"file\" and \"plugin\"";
        return false;
    }
    out.plugin = plugin->string;
    out.file = file->string;
    out.relative = StringOr(row, "relative", out.file);
    out.path = StringOr(row, "path", out.file);
    out.index = Count(row, "index");
    out.timeMs = NumberOr(row, "time", 0);
    out.imageProcessMs = NumberOr(row, "imgProcess", 0);
    out.status = StringOr(row, "status", "ok");
    out.length = Count(row, "length");
    out.data = StringOr(row, "data", "");
    ReadSymbols(row, out);
    out.json = text.substr(row.begin, row.end - row.begin);
    return true;
}

void ReadExpectations(const JsonValue& root, BatchRun& run) {
    const JsonValue* list = root.Find("expectations");
    if (!list) {
        return;
    }
    for (const JsonValue& item : list->items) {
        RunExpectation e;
        e.plugin = StringOr(item, "plugin", "");
        e.passed = static_cast<long>(Count(item, "passed"));
        e.misread = static_cast<long>(Count(item, "misread"));
        e.missed = static_cast<long>(Count(item, "missed"));
        e.unchecked = static_cast<long>(Count(item, "unchecked"));
        run.expectations.push_back(std::move(e));
    }
}

} // namespace

bool RunFile::Parse(const std::string& text, const std::string& name, BatchRun& run, std::string& error) {
    run = BatchRun();
    JsonValue root;
    std::string reason;
    if (!JsonValue::Parse(text, root, reason)) {
        error = name + ": not a JSON document (" + reason + ")";
        return false;
    }
    const JsonValue* rows = root.Find("rows");
    if (!rows || rows->type != JsonValue::Type::Array) {
        error = name + ": not a glyphor-batch JSON run (no \"rows\" list)";
        return false;
    }
    run.rows.resize(rows->items.size());
    for (size_t i = 0; i < rows->items.size(); ++i) {
        if (!ReadRow(rows->items[i], i, text, run.rows[i], reason)) {
            error = name + ": " + reason;
            run = BatchRun();
            return false;
        }
    }
    if (const JsonValue* statistics = root.Find("statistics")) {
        run.averageTimeMs = NumberOr(*statistics, "averageTime", 0);
        run.imageCount = static_cast<long>(Count(*statistics, "imageCount"));
        run.symbolsCount = static_cast<long>(Count(*statistics, "symbolsCount"));
        run.averageImageProcessMs = NumberOr(*statistics, "averageImageProcessTime", 0);
    }
    if (const JsonValue* shard = root.Find("shard")) {
        run.shardIndex = static_cast<int>(Count(*shard, "index"));
        run.shardCount = static_cast<int>(Count(*shard, "count"));
        if (run.shardCount < 1 || run.shardIndex < 1 || run.shardIndex > run.shardCount) {
            error = name + ": its \"shard\" is not K of N";
            run = BatchRun();
            return false;
        }
    }
    ReadExpectations(root, run);
    return true;
}

bool RunFile::Read(const std::string& path, BatchRun& run, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    if (file) {
        text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (!file || file.bad()) {
        error = "cannot read '" + path + "'";
        return false;
    }
    return Parse(text, path, run, error);
}
