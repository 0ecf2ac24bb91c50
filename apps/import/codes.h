// Codes for the values that files have for areas.

#ifndef VEXEL_APPS_IMPORT_CODES_H_
#define VEXEL_APPS_IMPORT_CODES_H_

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vexel::import {

// The codes of one level. A whole number is its own code; texts get the next free numbers in their
// order as bytes, so that the same values give the same codes whatever the order of a file. "01" is
// the number 1, unless a "1" is there as well: then it is a text.
class LevelCodes {
 public:
  // A value that has its code from an earlier import. Throws an Error of kind failure, without a
  // file's name, when the value has another one already or the code belongs to another value.
  void Keep(const std::string& value, int code);

  // Gives codes to all values that have none; they must not be empty.
  void Assign(const std::set<std::string>& values);

  // The code of a value that was kept or assigned.
  int Of(const std::string& value) const { return codes_.at(value); }

  // Pairs of values that differ in leading zeros only.
  const std::vector<std::string>& SameButForZeros() const { return alike_; }

  // Numbers that others had taken, so that they got another code.
  const std::vector<std::string>& Displaced() const { return displaced_; }

 private:
  bool Take(const std::string& value, int code);
  void FollowZeros(const std::set<std::string>& values);

  std::map<std::string, int, std::less<>> codes_;
  std::map<int, std::string> values_;  // by their codes
  std::vector<std::string> alike_;
  std::vector<std::string> displaced_;
};

// One line of a keys file.
struct KeyRow {
  std::vector<int> key;  // of the area
  std::string value;     // of the area's own level in the source
  std::string name;
};

// The text of a keys file: level, key, value, code and name of each area.
std::string KeysText(const std::vector<KeyRow>& rows);

// What a keys file says, row by row.
std::vector<KeyRow> ReadKeys(const std::string& path);

// The codes that rows of a keys file hold, for that many levels.
std::vector<LevelCodes> CodesOf(const std::vector<KeyRow>& rows, std::size_t levels,
                                const std::string& path);

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_CODES_H_
