// Other programs' verdicts on the files we write: xmllint reads XML (gzip
// too) and rsvg-convert renders SVG, each without a word on standard error.
// The test program defines FX_XMLLINT and FX_RSVG_CONVERT, their paths.
#ifndef FLOORXPORT_TESTS_SUPPORT_EXTERNAL_CHECKERS_H_
#define FLOORXPORT_TESTS_SUPPORT_EXTERNAL_CHECKERS_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program_runner.h"

namespace fx::testing {

// Every file of `files` read by one run of xmllint (in `work_dir`).
inline void ExpectXmllintAccepts(const std::vector<std::string>& files, const std::string& work_dir,
                                 const std::string& label) {
  std::vector<std::string> args = {"--noout"};
  args.insert(args.end(), files.begin(), files.end());
  const cli_test::ProgramResult result = cli_test::RunProgram(FX_XMLLINT, args, work_dir);
  EXPECT_EQ(result.exit_status, 0) << label;
  EXPECT_EQ(result.err, "") << label;
}

// `svg` rendered to a small picture, which is removed again.
inline void ExpectRsvgRenders(const std::string& svg, const std::string& work_dir, const std::string& label) {
  const std::string png = work_dir + "/rendered.png";
  const cli_test::ProgramResult result = cli_test::RunProgram(FX_RSVG_CONVERT, {"-w", "256", svg, "-o", png}, work_dir);
  EXPECT_EQ(result.exit_status, 0) << label;
  EXPECT_EQ(result.err, "") << label;
  std::error_code error;
  EXPECT_GT(std::filesystem::file_size(png, error), 0u) << label;
  std::filesystem::remove(png, error);
}

}  // namespace fx::testing

#endif  // FLOORXPORT_TESTS_SUPPORT_EXTERNAL_CHECKERS_H_
