// The command-line input of the console editor: script lines (from -c and -s,
// in order, as one stream), text sent for execution, and lines a user types.
//
// Syntax, as in the editor's scripts:
// - A blank (space or tab) or a line end ends a token: a command name or an
//   answer. Two separators in a row, or an empty line, give an empty token
//   (Enter). "ZOOM E" is two tokens; "UNITS " followed by the line end is
//   "UNITS" and an empty answer.
// - A token that starts with '"' is quoted: it keeps its blanks and ends at
//   the closing quote; a doubled quote ("") inside stands for one '"'. Text
//   glued after the closing quote, up to the next separator, is appended. An
//   unclosed quote runs to the line end. Quotes elsewhere are literal.
// - A line answer (TokenEnd::kLineEnd) takes everything up to the line end,
//   blanks included, unless it starts with a quote.
// - In script files, a line whose first character is ';' is a comment. A
//   trailing carriage return and a leading UTF-8 byte order mark are ignored.
#ifndef FLOORXPORT_HOST_DXF_CONSOLE_SCRIPT_INPUT_H_
#define FLOORXPORT_HOST_DXF_CONSOLE_SCRIPT_INPUT_H_

#if !defined(FLOORXPORT_HEADLESS_HOST)
#error "host/dxf belongs to the headless host; plug-in code uses the host API in host/"
#endif

#include <deque>
#include <functional>
#include <string>
#include <string_view>

namespace fx::console {

enum class TokenEnd {
  kBlank,    // a blank or the line end ends the token
  kLineEnd,  // only the line end does; blanks belong to the token
};

// Where a token came from: typed answers are already on the user's screen,
// the others are echoed in the transcript.
enum class TokenOrigin { kScript, kTyped };

class ScriptInput {
 public:
  // Supplies further lines once the script is used up (interactive mode:
  // reads the terminal); returns false at the end of input.
  using LineReader = std::function<bool(std::string& line)>;

  // Appends a command line (-c); a '\n' inside it starts a new line.
  void AddLine(std::string_view text);
  // Appends the lines of a script file (-s). False, with *error naming the
  // file and the reason, when it cannot be read.
  bool AddFile(const std::string& path, std::string* error);
  // Puts a command line in front of everything not read yet (text sent for
  // execution). One trailing blank or '\n' stands for the line end.
  void InsertFront(std::string_view text);
  void SetLineReader(LineReader reader) { reader_ = std::move(reader); }

  // The next token; false when the input is used up (nothing left and no
  // line reader, or the reader is at its end).
  bool Next(TokenEnd end, std::string& token, TokenOrigin* origin = nullptr);
  // True while script text is left (lines still to be typed do not count).
  bool hasPending() const { return in_line_ || !lines_.empty(); }
  // Drops everything not read yet; the line reader stays.
  void Clear();

 private:
  struct Line {
    std::string text;
    TokenOrigin origin = TokenOrigin::kScript;
  };
  bool StartLine();
  std::string ReadQuoted();
  std::string ReadUntil(TokenEnd end);

  std::deque<Line> lines_;
  Line line_;       // the line being read, while in_line_
  size_t pos_ = 0;  // the next character of line_
  bool in_line_ = false;
  LineReader reader_;
};

}  // namespace fx::console

#endif  // FLOORXPORT_HOST_DXF_CONSOLE_SCRIPT_INPUT_H_
