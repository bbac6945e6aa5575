#include "server/service_errors.h"

#include <algorithm>
#include <initializer_list>

#include "server/client_cache.h"

namespace fx::server {
namespace {

bool OneOf(int code, std::initializer_list<int> codes) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

std::string FormatCall(const char* reason, int code, int errnum, bool fault) {
  std::string details = reason != nullptr ? reason : "";
  details += "\nError Code: " + std::to_string(code) + ".";
  details += "\nError Num: " + std::to_string(errnum) + ".";
  if (!fault) details += "\n";
  return details;
}

}  // namespace

const char* ErrorClassText(int code) {
  if (OneOf(code, {SOAP_TAG_MISMATCH, SOAP_SYNTAX_ERROR, SOAP_NO_TAG, SOAP_NAMESPACE, SOAP_NULL,
                   SOAP_DUPLICATE_ID, SOAP_MISSING_ID, SOAP_HREF, SOAP_REQUIRED, SOAP_PROHIBITED,
                   SOAP_OCCURS, SOAP_LENGTH})) {
    return "XML error occured.";
  }
  if (OneOf(code, {SOAP_CLI_FAULT, SOAP_SVR_FAULT, SOAP_MUSTUNDERSTAND, SOAP_FAULT, SOAP_NO_METHOD,
                   SOAP_VERSIONMISMATCH})) {
    return "SOAP error occured.";
  }
  if (code == SOAP_TCP_ERROR || code == SOAP_EOF) return "TCP error occured.";
  if (code == SOAP_SSL_ERROR) return "SSL error occured.";
  if (code == SOAP_ZLIB_ERROR) return "Zlib error occured.";
  if (code == SOAP_HTTP_ERROR || (code >= SOAP_NO_DATA && code <= SOAP_HTTP_METHOD) ||
      (code >= 100 && code <= 599)) {
    return "HTTP error occured.";
  }
  return "Unknown error occured.";
}

std::string VersionText() {
  std::string text = FX_VERSION;
  std::replace(text.begin(), text.end(), '.', ',');
  std::string spaced;
  for (char c : text) {
    spaced += c;
    if (c == ',') spaced += ' ';
  }
  return spaced;
}

std::string ServiceErrorReport(std::string_view details) {
  std::string message = "An unexpected error occurred. Please contact Vantory at ";
  message += kSupportTelephone;
  if (!details.empty()) {
    message += "\n\nError details:\n";
    message += details;
  }
  return message;
}

std::string CallErrorDetails(const std::string& server_key, int call_result, const char* op) {
  ProgressDrawingAPIPortBindingProxy* client = FindClient(server_key);
  std::string details;
  std::string url;
  if (client == nullptr) {
    details = std::string(ErrorClassText(call_result)) + "\nError Code: " +
              std::to_string(call_result) + ".\nError Num: .\n";
  } else {
    const int code = client->soap->error;
    const int errnum = client->soap->errnum;
    if (code == SOAP_FAULT) {
      const char* reason = soap_fault_string(client->soap);
      details = FormatCall(reason, code, errnum, true);
    } else {
      details = FormatCall(ErrorClassText(code), code, errnum, false);
    }
    url = client->LastUrl();
  }
  details += "\nURL : " + url;
  details += "\n operation : ";
  details += op;
  details += "\n version : " + VersionText() + "\n";
  return details;
}

std::string CallErrorReport(const std::string& server_key, int call_result, const char* op) {
  return ServiceErrorReport(CallErrorDetails(server_key, call_result, op));
}

}  // namespace fx::server
