#include "orlan/platform/HttpClient.hpp"

namespace orlan {
namespace urlErrors {
namespace {

Error made(std::int64_t code, std::string description) {
  return {"URLError", code, std::move(description)};
}

}  // namespace

Error cancelled() {
  return made(-999, "The request was cancelled.");
}
Error badURL() {
  return made(-1000, "The URL is not valid.");
}
Error timedOut() {
  return made(-1001, "The request timed out.");
}
Error cannotConnectToHost() {
  return made(-1004, "Could not connect to the server.");
}
Error badServerResponse() {
  return made(-1011, "The server gave a bad response.");
}
Error other(std::string why) {
  return made(-1, std::move(why));
}

}  // namespace urlErrors

namespace {

struct Phrase {
  int status;
  std::string_view text;
};

// The registered reason phrases, as they read inside a sentence.
constexpr Phrase phrases[] = {
    {100, "continue"},
    {101, "switching protocols"},
    {102, "processing"},
    {103, "early hints"},
    {200, "ok"},
    {201, "created"},
    {202, "accepted"},
    {203, "non-authoritative information"},
    {204, "no content"},
    {205, "reset content"},
    {206, "partial content"},
    {207, "multi-status"},
    {208, "already reported"},
    {226, "im used"},
    {300, "multiple choices"},
    {301, "moved permanently"},
    {302, "found"},
    {303, "see other"},
    {304, "not modified"},
    {305, "use proxy"},
    {307, "temporary redirect"},
    {308, "permanent redirect"},
    {400, "bad request"},
    {401, "unauthorized"},
    {402, "payment required"},
    {403, "forbidden"},
    {404, "not found"},
    {405, "method not allowed"},
    {406, "not acceptable"},
    {407, "proxy authentication required"},
    {408, "request timeout"},
    {409, "conflict"},
    {410, "gone"},
    {411, "length required"},
    {412, "precondition failed"},
    {413, "content too large"},
    {414, "uri too long"},
    {415, "unsupported media type"},
    {416, "range not satisfiable"},
    {417, "expectation failed"},
    {421, "misdirected request"},
    {422, "unprocessable content"},
    {423, "locked"},
    {424, "failed dependency"},
    {425, "too early"},
    {426, "upgrade required"},
    {428, "precondition required"},
    {429, "too many requests"},
    {431, "request header fields too large"},
    {451, "unavailable for legal reasons"},
    {500, "internal server error"},
    {501, "not implemented"},
    {502, "bad gateway"},
    {503, "service unavailable"},
    {504, "gateway timeout"},
    {505, "http version not supported"},
    {506, "variant also negotiates"},
    {507, "insufficient storage"},
    {508, "loop detected"},
    {510, "not extended"},
    {511, "network authentication required"},
};

std::string_view classPhrase(int status) {
  switch (status / 100) {
    case 1:
      return "informational";
    case 2:
      return "success";
    case 3:
      return "redirected";
    case 4:
      return "client error";
    case 5:
      return "server error";
    default:
      return "unknown status";
  }
}

}  // namespace

std::string_view statusPhrase(int status) {
  for (const Phrase& phrase : phrases) {
    if (phrase.status == status) return phrase.text;
  }
  return classPhrase(status);
}

}  // namespace orlan
