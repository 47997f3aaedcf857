#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "linux/HttpFixture.hpp"

namespace orlan::linuxphone::test {
namespace {

void answerAtOnce(Peer& peer) {
  while (!peer.readRequest().empty() && peer.write(plainReply(200, "x"))) continue;
}
void hang(Peer& peer) {
  peer.waitForHangUp();
}

TEST(HttpCancel, WaitsForACompletionThatIsRunning) {
  LoopbackServer server(answerAtOnce);
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  for (int round = 0; round < 20; ++round) {
    std::promise<void> started;
    std::promise<void> mayFinish;
    bool finished = false;  // unguarded: that the cancellation waits is what orders the accesses
    auto handle = client.send(get(server.url()), [&](const Result<HttpReply>&) {
      started.set_value();
      mayFinish.get_future().wait();
      finished = true;
    });
    started.get_future().wait();
    std::thread releaser([&] { mayFinish.set_value(); });
    handle.cancel();
    EXPECT_TRUE(finished);
    releaser.join();
  }
}

TEST(HttpCancel, RacesWithTheAnswerWithoutHarm) {
  LoopbackServer server(answerAtOnce);
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  for (int round = 0; round < 200; ++round) {
    int completions = 0;  // unguarded, as above
    auto handle = client.send(get(server.url()), [&](const Result<HttpReply>&) { ++completions; });
    const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(5 * round);
    while (std::chrono::steady_clock::now() < until) continue;  // a busy machine would hold a yield for long
    handle.cancel();
    EXPECT_LE(completions, 1);
  }
}

TEST(HttpCancel, FreesWhatTheCompletionHolds) {
  LoopbackServer server(hang);
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  const auto held = std::make_shared<int>(0);
  auto handle = client.send(get(server.url()), [held](const Result<HttpReply>&) {});
  handle.cancel();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(HttpCancel, TheClientsEndAnswersWhatIsOnItsWay) {
  LoopbackServer server(hang);
  phone::PhoneObserver nobody;
  auto client = std::make_unique<CurlHttpClient>(nobody);
  Outcome first, second, sentFromInside;
  std::vector<Subscription> handles;
  Subscription inner;
  handles.push_back(client->send(get(server.url()), first.done()));
  handles.push_back(client->send(get(server.url()), [&](Result<HttpReply> result) {
    inner = client->send(get(server.url()), sentFromInside.done());
    second.done()(std::move(result));
  }));
  const auto begin = std::chrono::steady_clock::now();
  CurlHttpClient* ending = client.get();
  ending->~CurlHttpClient();
  ::operator delete(client.release());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  for (Outcome* each : {&first, &second, &sentFromInside}) {
    EXPECT_EQ(each->completions(), 1);
    EXPECT_EQ(summary(each->wait()), "error -999");
  }
  handles.clear();  // after the client: nothing to cancel any more
}

}  // namespace
}  // namespace orlan::linuxphone::test
