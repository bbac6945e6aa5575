// Letter case in names and answers: ASCII letters only, as the editor
// compares command names, keywords and symbol names.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_TEXT_CASE_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_TEXT_CASE_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <string>
#include <string_view>

namespace fx::console {

bool EqualNoCase(std::string_view a, std::string_view b);
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_TEXT_CASE_H_
