#pragma once

#include "cli/context.h"
#include "core/json/json_reader.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Reading what the command line names. Every error says "FILE:LINE: what is wrong" or, for a
/// document of the wrong shape, "FILE:PATH: what is wrong".
namespace trellivar::cli {

/// The content of a file (a pipe will do), or of standard input for "-". Throws Failure.
std::string readInput(Context& context, const std::string& file);

/// The same as a JSON document.
Json readDocument(Context& context, const std::string& file);

/// Calls `decodeDocument` and gives a DecodingError the name of the file. Throws BadInput.
template <class Decode> auto decodingFile(const std::string& file, const Decode& decodeDocument) {
  try {
    return decodeDocument();
  } catch (const DecodingError& error) {
    throw BadInput(file + ":" + error.what());
  }
}

template <class T> T readAs(Context& context, const std::string& file) {
  const Json document = readDocument(context, file);
  return decodingFile(file, [&] { return JsonReader(document).as<T>(); });
}

/// Calls `visit` for each record of a JSON Lines file, in order, with the number of its line from
/// 1; blank lines are skipped. A DecodingError out of `visit` becomes BadInput with the record's
/// line.
void forEachRecord(Context& context, const std::string& file,
                   const std::function<void(const JsonReader&, std::size_t line)>& visit);

template <class T> std::vector<T> readRecords(Context& context, const std::string& file) {
  std::vector<T> records;
  forEachRecord(context, file,
                [&](const JsonReader& record, std::size_t) { records.push_back(record.as<T>()); });
  return records;
}

/// An integer, decimal or with 0x hexadecimal. `name` is the option, for the error. Throws
/// BadInput.
int parseInteger(std::string_view name, std::string_view text);

} // namespace trellivar::cli
