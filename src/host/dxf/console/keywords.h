// Keyword lists as acedInitGet takes them ("Extents Object"), and matching an
// answer against one.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_KEYWORDS_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_KEYWORDS_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fx::console {

class KeywordList {
 public:
  // Keywords separated by blanks. A lone "_" may follow them with the same
  // number of global (language-independent) keywords: "Ja Nein _ Yes No".
  explicit KeywordList(std::string_view list = {});
  bool empty() const { return local_.empty(); }

  // The keyword that `answer` names, compared without regard to case: the
  // whole keyword, its capital letters ("X" for "eXit"), or a prefix no other
  // keyword shares, in that order of preference. An answer starting with "_"
  // names a global keyword. The result is the global keyword when the list
  // has them, otherwise the keyword as listed; nullopt when none matches.
  std::optional<std::string> Match(std::string_view answer) const;

 private:
  std::vector<std::string> local_;
  std::vector<std::string> global_;  // empty, or as many as local_
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_KEYWORDS_H_
