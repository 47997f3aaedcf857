#include <gtest/gtest.h>

#include "orlan/backend/calls.hpp"

namespace orlan {
namespace {

using Text = std::optional<std::string>;

TEST(TokenToSync, SendsWhatTheBackendHasNotSeen) {
  struct Row {
    const char* name;
    const char* current;
    Text lastSynced;
    bool force;
    Text expected;
  };
  for (const auto& [name, current, lastSynced, force, expected] :
       {Row{"no token, nothing known", "pending", std::nullopt, false, std::nullopt},
        {"no token, one known", "pending", "old", false, std::nullopt},
        {"no token, forced, nothing known", "pending", std::nullopt, true, std::nullopt},
        {"no token, forced, empty known", "pending", "", true, std::nullopt},
        {"no token, forced, one known", "pending", "old", true, "old"},
        {"no token, forced, registered without one", "pending", "pending", true, "pending"},
        {"first token", "new", std::nullopt, false, "new"},
        {"first token after registering without one", "new", "pending", false, "new"},
        {"another token", "new", "old", false, "new"},
        {"same token", "old", "old", false, std::nullopt},
        {"same token, forced", "old", "old", true, "old"},
        {"first token, forced", "new", std::nullopt, true, "new"}}) {
    EXPECT_EQ(calls::tokenToSync(current, lastSynced, force), expected) << name;
  }
}

TEST(PushToken, FCMWinsOverAPNsAndNothingIsPending) {
  ClientState client(BaseUrls::builtIn());
  EXPECT_EQ(client.pushToken(), "pending");
  client.setAPNsToken("00ab");
  EXPECT_EQ(client.pushToken(), "00ab");
  client.setFCMToken("fcm");
  EXPECT_EQ(client.pushToken(), "fcm");
  client.setAPNsToken("00cd");
  EXPECT_EQ(client.pushToken(), "fcm");
  client.setFCMToken("");
  EXPECT_EQ(client.pushToken(), "00cd");
}

}  // namespace
}  // namespace orlan
