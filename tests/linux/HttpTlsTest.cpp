#include <openssl/ssl.h>

#include <memory>
#include <string>

#include "linux/HttpFixture.hpp"
#include "phones/linux/Releasing.hpp"

namespace orlan::linuxphone::test {
namespace {

const std::string data = ORLAN_SOURCE_DIR "/tests/data/tls/";

/// Answers one request over TLS; whether there was one.
bool answer(Peer& peer, const std::string& identity) {
  const std::unique_ptr<SSL_CTX, Releasing<SSL_CTX_free>> context(SSL_CTX_new(TLS_server_method()));
  SSL_CTX_use_certificate_file(context.get(), identity.c_str(), SSL_FILETYPE_PEM);
  SSL_CTX_use_PrivateKey_file(context.get(), identity.c_str(), SSL_FILETYPE_PEM);
  const std::unique_ptr<SSL, Releasing<SSL_free>> tls(SSL_new(context.get()));
  SSL_set_fd(tls.get(), peer.socket());
  char buffer[4096];
  if (SSL_accept(tls.get()) != 1 || SSL_read(tls.get(), buffer, sizeof buffer) <= 0) return false;
  const std::string reply = plainReply(200, "secret");
  SSL_write(tls.get(), reply.data(), static_cast<int>(reply.size()));
  SSL_shutdown(tls.get());
  return true;
}

TEST(HttpTls, OnlyACertificateThatIsTrustedValidAndOfThisHostWillDo) {
  const struct {
    const char* identity;
    bool trusted;
    std::string expected;
  } rows[] = {
      {"here.pem", true, "200: secret"},
      {"here.pem", false, "URLError -1"},
      {"elsewhere.pem", true, "URLError -1"},
      {"expired.pem", true, "URLError -1"},
  };
  for (const auto& row : rows) {
    bool askedFor = false;
    {
      LoopbackServer server([&](Peer& peer) { askedFor = answer(peer, data + row.identity); });
      HttpOptions options;
      if (row.trusted) options.extraCaFile = data + row.identity;
      EXPECT_EQ(exchange(get("https" + server.url().substr(4)), options), row.expected) << row.identity;
    }
    EXPECT_EQ(askedFor, row.expected == "200: secret") << row.identity;  // no key leaves before the check
  }
}

}  // namespace
}  // namespace orlan::linuxphone::test
