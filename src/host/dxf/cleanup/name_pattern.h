// Name patterns as the editor's commands take them: a comma-separated list
// of wildcard patterns compared without regard to ASCII case. '*' matches
// any run of characters, '?' any one character, '#' a digit, '@' a letter;
// a pattern starting with '~' matches the names the rest does not match.
// An empty list matches every name.
#ifndef FLOORXPORT_HOST_DXF_CLEANUP_NAME_PATTERN_H_
#define FLOORXPORT_HOST_DXF_CLEANUP_NAME_PATTERN_H_

#include <string>
#include <string_view>
#include <vector>

namespace fx::cleanup {

class NamePattern {
 public:
  explicit NamePattern(std::string_view list);
  // `name` is UTF-8; '?' matches one character, however many bytes it takes.
  bool Matches(std::string_view name) const;

 private:
  std::vector<std::string> patterns_;
};

}  // namespace fx::cleanup

#endif  // FLOORXPORT_HOST_DXF_CLEANUP_NAME_PATTERN_H_
