#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <memory>
#include <string>

#include "linux/HttpFixture.hpp"
#include "linux/TemporaryDirectory.hpp"

namespace orlan::linuxphone::test {
namespace {

template <auto release>
struct Releasing {
  template <class T>
  void operator()(T* held) const {
    release(held);
  }
};
template <class T, auto release>
using Owned = std::unique_ptr<T, Releasing<release>>;

/// A certificate that vouches for itself.
struct Identity {
  Owned<EVP_PKEY, EVP_PKEY_free> key{EVP_EC_gen("P-256")};
  Owned<X509, X509_free> certificate{X509_new()};
};

/// `names` as in "IP:127.0.0.1"; valid from an hour ago until `secondsLeft` from now.
Identity makeIdentity(const std::string& names, long secondsLeft) {
  Identity identity;
  X509* x = identity.certificate.get();
  X509_set_version(x, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(x), 1);
  X509_gmtime_adj(X509_getm_notBefore(x), -3600);
  X509_gmtime_adj(X509_getm_notAfter(x), secondsLeft);
  X509_set_pubkey(x, identity.key.get());
  X509_NAME* name = X509_get_subject_name(x);
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("test"), -1, -1,
                             0);
  X509_set_issuer_name(x, name);
  const Owned<X509_EXTENSION, X509_EXTENSION_free> alternative(
      X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, names.c_str()));
  X509_add_ext(x, alternative.get(), -1);
  const Owned<X509_EXTENSION, X509_EXTENSION_free> authority(
      X509V3_EXT_conf_nid(nullptr, nullptr, NID_basic_constraints, "CA:TRUE"));
  X509_add_ext(x, authority.get(), -1);
  X509_sign(x, identity.key.get(), EVP_sha256());
  return identity;
}

void writePem(const std::string& path, const Identity& identity) {
  const Owned<FILE, fclose> file(fopen(path.c_str(), "w"));
  PEM_write_X509(file.get(), identity.certificate.get());
}

/// Answers one request over TLS and notes whether there was one.
void answer(Peer& peer, const Identity& identity, bool& askedFor) {
  const Owned<SSL_CTX, SSL_CTX_free> context(SSL_CTX_new(TLS_server_method()));
  SSL_CTX_use_certificate(context.get(), identity.certificate.get());
  SSL_CTX_use_PrivateKey(context.get(), identity.key.get());
  const Owned<SSL, SSL_free> tls(SSL_new(context.get()));
  SSL_set_fd(tls.get(), peer.socket());
  char buffer[4096];
  if (SSL_accept(tls.get()) != 1 || SSL_read(tls.get(), buffer, sizeof buffer) <= 0) return;
  askedFor = true;
  const std::string reply = plainReply(200, "secret");
  SSL_write(tls.get(), reply.data(), static_cast<int>(reply.size()));
  SSL_shutdown(tls.get());
}

TEST(HttpTls, OnlyACertificateThatIsTrustedValidAndOfThisHostWillDo) {
  const struct {
    const char* name;
    const char* names;
    long secondsLeft;
    bool trusted;
    std::string expected;
  } rows[] = {
      {"trusted", "IP:127.0.0.1", 3600, true, "200: secret"},
      {"unknown", "IP:127.0.0.1", 3600, false, "error -1"},
      {"of another host", "DNS:example.com", 3600, true, "error -1"},
      {"out of date", "IP:127.0.0.1", -60, true, "error -1"},
  };
  const TemporaryDirectory directory;
  for (const auto& row : rows) {
    const Identity identity = makeIdentity(row.names, row.secondsLeft);
    writePem(directory.file("ca.pem"), identity);
    bool askedFor = false;
    {
      LoopbackServer server([&](Peer& peer) { answer(peer, identity, askedFor); });
      HttpOptions options;
      if (row.trusted) options.extraCaFile = directory.file("ca.pem");
      const auto result = exchange(get("https://127.0.0.1:" + std::to_string(server.port()) + "/"), options);
      EXPECT_EQ(summary(result), row.expected)
          << row.name << ": " << (result ? "" : result.error().description);
    }
    EXPECT_EQ(askedFor, row.expected == "200: secret") << row.name;  // no key leaves before the check
  }
}

TEST(HttpTls, APlainServerIsNoSecureOne) {
  LoopbackServer server([](Peer& peer) { peer.write(plainReply(200, "plain")); });
  EXPECT_EQ(summary(exchange(get("https://127.0.0.1:" + std::to_string(server.port()) + "/"))), "error -1");
}

}  // namespace
}  // namespace orlan::linuxphone::test
