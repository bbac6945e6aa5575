// The service client against replies written as the real service writes
// them, and against the ways a call goes wrong: what it reads and reports.
#include <gtest/gtest.h>

#include <string>
#include <span>
#include <vector>

#include "canned_server.h"
#include "server/client_cache.h"
#include "server/log_in.h"
#include "server/service_calls.h"
#include "server/service_errors.h"

namespace fx::exchange_test {
namespace {

using fx::server::BuildingEntry;

std::vector<std::string> g_progress;

void RecordStatus(const char* text) { g_progress.push_back(text); }
void RecordPercent(int percent) { g_progress.push_back(std::to_string(percent)); }

bool PromptCancels(std::string&, std::string&) { return false; }

class ClientRepliesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_progress.clear();
    fx::server::SetCallbacks(RecordStatus, RecordPercent);
    fx::server::SetLogInPrompt(PromptCancels);
    fx::server::ForgetCredentials();
  }
  void TearDown() override {
    fx::server::SetCallbacks(nullptr, nullptr);
    fx::server::SetLogInPrompt(nullptr);
  }

  CannedServer server_;
};

TEST_F(ClientRepliesTest, ListingIsReadWhateverThePrefixesAndFraming) {
  const std::string xml = CapturedReply("listing.xml");
  for (const CannedReply& reply : {PlainReply(xml), ChunkedReply(xml), MtomReply(xml)}) {
    CannedServer server;
    server.Push(reply);
    std::vector<BuildingEntry> buildings;
    ASSERT_EQ(fx::server::ListBuildingsAndFloors(server.address(), buildings), 0);
    ASSERT_EQ(buildings.size(), 1u);
    const BuildingEntry& building = buildings[0];
    EXPECT_EQ(building.name + "|" + building.city + "|" + building.street + "|" + building.street2 + "|" + building.state,
              "Garibaldi Tower|Lyon|12 rue Garibaldi|Bâtiment B|Auvergne-Rhône-Alpes");
    ASSERT_EQ(building.floors.size(), 2u);
    EXPECT_EQ(building.floors[0].name, "Rez-de-chaussée");
    EXPECT_EQ(building.floors[0].id, 120);
    EXPECT_DOUBLE_EQ(building.floors[0].area, 1835.5);
    EXPECT_TRUE(building.floors[0].drawing_available);
    EXPECT_FALSE(building.floors[0].dwg_available);  // each flag read from its own element
    EXPECT_EQ(building.floors[0].binary_format, "DWG");
    // Missing id and dateUpdated read as zero; unknown elements are skipped.
    EXPECT_EQ(building.floors[1].id, 0);
    EXPECT_EQ(building.floors[1].name, "Étage 1");
    EXPECT_FALSE(building.floors[1].has_area);
  }
  CannedServer empty;
  empty.Push(PlainReply(CapturedReply("empty_listing.xml")));
  std::vector<BuildingEntry> none{BuildingEntry{}};
  EXPECT_EQ(fx::server::ListBuildingsAndFloors(empty.address(), none), 0);
  EXPECT_TRUE(none.empty());
}

TEST_F(ClientRepliesTest, RequestsAreLiteralSoap11WithAnEmptyActionAndNoEncodingStyle) {
  server_.Push(PlainReply(CapturedReply("create_floor.xml")));
  int floor = 0;
  ASSERT_EQ(fx::server::CreateFloor(server_.address(), 12, "Étage 2", floor), 0);
  EXPECT_EQ(floor, 121);
  const std::string request = server_.requests().at(0);
  EXPECT_NE(request.find("POST /external/api/soap/space/drawing/v1 HTTP/1.1"), std::string::npos);
  EXPECT_NE(request.find("SOAPAction: \"\""), std::string::npos);
  EXPECT_EQ(request.find("encodingStyle"), std::string::npos);
  EXPECT_NE(request.find("http://schemas.xmlsoap.org/soap/envelope/"), std::string::npos);
  EXPECT_NE(request.find("<buildingId>12</buildingId><floorName>Étage 2</floorName>"),
            std::string::npos);
}

// A drawing is received whole, with its progress at the halfway mark; the
// floor document, small, reports no halfway mark.
TEST_F(ClientRepliesTest, DownloadsKeepEveryByteAndReportProgress) {
  std::string dwg = "AC1032";
  for (int i = 0; i < 70000; ++i) dwg += static_cast<char>(i * 7 % 256);  // zeros and CR/LF included
  server_.Push(MtomReply(CapturedReply("get_dwg_mtom.xml"),
                         "6f1c2a54-0b1d-4c39-9a51-2b0f5f0c7e21@example.jaxws.sun.com", dwg));
  std::span<const unsigned char> bytes;
  ASSERT_EQ(fx::server::DownloadDrawingFile(server_.address(), 120, bytes), 0);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), dwg);
  EXPECT_EQ(g_progress, (std::vector<std::string>{"Receiving from Vantory", "50", "100"}));

  g_progress.clear();
  CannedServer refusing;
  refusing.Push(UnauthorizedReply());
  ProgressDrawingAPIPortBindingProxy* client = fx::server::GetClient(refusing.address());
  ns1__getDrawing request;
  ns1__getDrawingResponse response;
  EXPECT_EQ(client->getDrawing(&request, response), 401);
  EXPECT_EQ(g_progress, (std::vector<std::string>{"Receiving from Vantory", "100"}));
  EXPECT_FALSE(client->call_in_progress);
}

// A fault's details start with its reason and have no blank line before
// the URL; any other failure starts with its class and has one.
TEST_F(ClientRepliesTest, FaultReportCarriesTheReasonAndTheOperation) {
  const std::string fault = CapturedReply("fault_not_found.xml");
  for (const CannedReply& reply : {PlainReply(fault, 500), MtomReply(fault)}) {
    CannedServer server;
    server.Push(reply);
    std::span<const unsigned char> bytes;
    const int result = fx::server::DownloadDrawingFile(server.address(), 99, bytes);
    EXPECT_EQ(result, 12);
    const std::string details = fx::server::CallErrorDetails(server.address(), result, "open_from");
    EXPECT_EQ(details, "Drawing for floor 99 not found\nError Code: 12.\nError Num: 0.\nURL : 127.0.0.1/"
                       "external/api/soap/space/drawing/v1\n operation : open_from\n version : " +
                           fx::server::VersionText() + "\n");
  }
}

TEST(ErrorClassTest, CodesFallIntoTheirClassesInOrder) {
  const std::vector<std::pair<int, const char*>> table = {
      {3, "XML error occured."},  {45, "XML error occured."},  {12, "SOAP error occured."},
      {39, "SOAP error occured."}, {28, "TCP error occured."},  {-1, "TCP error occured."},
      {30, "SSL error occured."},  {31, "Zlib error occured."}, {29, "HTTP error occured."},
      {14, "HTTP error occured."}, {19, "HTTP error occured."}, {599, "HTTP error occured."},
      {7, "Unknown error occured."}, {600, "Unknown error occured."}};
  for (const auto& [code, text] : table) EXPECT_STREQ(fx::server::ErrorClassText(code), text) << code;
  EXPECT_EQ(fx::server::ServiceErrorReport(""),
            std::string("An unexpected error occurred. Please contact Vantory at ") +
                fx::server::kSupportTelephone);
}

}  // namespace
}  // namespace fx::exchange_test
