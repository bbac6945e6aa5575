// Finding sections and reading and setting header variables.
#include <gtest/gtest.h>

#include "host/dxf/dxf_header_variables.h"
#include "host/dxf/dxf_sections.h"
#include "host/dxf/dxf_writer.h"
#include "test_support.h"

namespace fx::dxf {
namespace {

using testing::ParseOrFail;
using testing::TestData;

TEST(Sections, AMissingEndsecEndsAtTheNextSectionOrTheEnd) {
  const std::unique_ptr<Document> doc = ParseOrFail(TestData("missing_eof.dxf"), "m");
  ASSERT_TRUE(doc);
  const RecordId endsec = doc->last();
  ASSERT_EQ(doc->type(endsec), "ENDSEC");
  doc->Erase(endsec);
  const SectionRange entities = FindSection(*doc, "ENTITIES");
  EXPECT_EQ(doc->type(entities.first), "LINE");
  EXPECT_EQ(entities.end, kNoRecord);
}

TEST(HeaderVariables, GetReadsAndSetReplacesOrAddsValueTags) {
  const std::unique_ptr<Document> doc = ParseOrFail(TestData("minimal.dxf"), "m");
  ASSERT_TRUE(doc);
  EXPECT_EQ(GetHeaderValue(*doc, "$INSUNITS"), "6");
  EXPECT_TRUE(GetHeaderVariable(*doc, "$HANDSEED").empty());
  EXPECT_EQ(doc->acadver(), "AC1015");
  const Tag units[] = {{70, "4"}};
  const Tag seed[] = {{5, "20000"}};
  const Tag extmin[] = {{10, "-1.5"}, {20, "2.0"}, {30, "0.0"}};
  const Tag version[] = {{1, "AC1018"}};
  ASSERT_TRUE(SetHeaderVariable(*doc, "$INSUNITS", units));
  ASSERT_TRUE(SetHeaderVariable(*doc, "$HANDSEED", seed));
  ASSERT_TRUE(SetHeaderVariable(*doc, "$EXTMIN", extmin));
  ASSERT_TRUE(SetHeaderVariable(*doc, "$ACADVER", version));
  EXPECT_FALSE(SetHeaderVariable(*doc, "$CLAYER", {}));
  EXPECT_EQ(doc->acadver(), "AC1018");

  std::string written;
  ASSERT_TRUE(WriteTo(*doc, &written).ok());
  EXPECT_NE(written.find("  9\n$INSUNITS\n 70\n4\n  9\n$HANDSEED\n  5\n20000\n  9\n$EXTMIN\n"
                         " 10\n-1.5\n 20\n2.0\n 30\n0.0\n  0\nENDSEC\n"),
            std::string::npos)
      << written;
  const std::unique_ptr<Document> reread = ParseOrFail(written, "written");
  ASSERT_TRUE(reread);
  EXPECT_EQ(GetHeaderValue(*reread, "$HANDSEED"), "20000");
  EXPECT_EQ(GetHeaderVariable(*reread, "$INSUNITS")[0].code, 70);
  EXPECT_EQ(GetHeaderVariable(*reread, "$EXTMIN").size(), 3u);
  EXPECT_EQ(reread->acadver(), "AC1018");
}

TEST(HeaderVariables, SetCreatesAHeaderSectionWhenThereIsNone) {
  const std::unique_ptr<Document> doc =
      ParseOrFail("0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n", "no_header.dxf");
  ASSERT_TRUE(doc);
  const Tag version[] = {{1, "AC1009"}};
  ASSERT_TRUE(SetHeaderVariable(*doc, "$ACADVER", version));
  std::string written;
  ASSERT_TRUE(WriteTo(*doc, &written).ok());
  EXPECT_EQ(written,
            "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
            "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
}

}  // namespace
}  // namespace fx::dxf
