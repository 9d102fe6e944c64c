#pragma once

#include <string>

/// The JSON that the tests feed, as text.
namespace trellivar::cli::documents {

inline std::string key(const std::string& name) { return R"({"keyCode":")" + name + R"("})"; }

/// `codes` are keys, separated by commas.
inline std::string physicalKey(int id, const std::string& codes, bool isChord) {
  return R"({"id":)" + std::to_string(id) + R"(,"row":0,"col":0,"signature":{"codes":[)" + codes +
         R"(],"isChord":)" + (isChord ? "true" : "false") + "}}";
}

inline std::string device(const std::string& ids, const std::string& keys) {
  return R"({"name":"Pad",)" + ids + R"(,"layout":{"keys":[)" + keys + "]}}";
}

inline std::string mapping(int id, const std::string& output) {
  return R"({"fromKeyId":)" + std::to_string(id) + R"(,"output":)" + output + "}";
}

inline std::string profile(const std::string& name, const std::string& mappings) {
  return R"({"id":"5C1F7A52-3B0E-4E0B-9C63-0D9B8C6A1E01","name":")" + name + R"(","mappings":[)" +
         mappings + "]}";
}

inline std::string mappingSet(const std::string& device, const std::string& profile,
                              const std::string& further = "") {
  return R"({"device":)" + device + R"(,"profile":)" + profile + further + "}";
}

inline std::string sets(const std::string& list) { return R"({"sets":[)" + list + "]}"; }

inline std::string tap(const std::string& name) {
  return R"({"sequence":{"keys":[)" + key(name) + "]}}";
}

inline std::string chord(const std::string& modifier, const std::string& name) {
  return R"({"chord":{"modifiers":[")" + modifier + R"("],"key":)" + key(name) + "}}";
}

/// A pad of no known kind with the identity 7:9. Key 1 is the chord of left_control and f, key 2
/// the single g; they type x and y.
inline std::string otherPadSet(const std::string& ids = R"("vendorId":7,"productId":9)") {
  return mappingSet(device(ids, physicalKey(1, key("left_control") + "," + key("f"), true) + "," +
                                    physicalKey(2, key("g"), false)),
                    profile("P", mapping(1, tap("x")) + "," + mapping(2, tap("y"))));
}

inline std::string recorded(const std::string& name, const std::string& phase,
                            const std::string& timestamp, bool isModifier = false) {
  return R"({"key":)" + key(name) + R"(,"phase":")" + phase + R"(","timestamp":)" + timestamp +
         R"(,"isModifier":)" + (isModifier ? "true" : "false") + "}\n";
}

/// The same, of a device.
inline std::string recordedOn(const std::string& ids, const std::string& name,
                              const std::string& phase, const std::string& timestamp,
                              bool isModifier = false) {
  std::string line = recorded(name, phase, timestamp, isModifier);
  line.replace(line.size() - 2, 1, "," + ids + "}");
  return line;
}

} // namespace trellivar::cli::documents
