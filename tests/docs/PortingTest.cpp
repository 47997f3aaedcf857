// What the guide to ports shows in C, with a main loop of a few lines.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "orlan/c/orlan.h"

namespace {

struct MyLoop {
  std::vector<std::pair<int64_t, orlan_id>> tasks;
};
MyLoop my_loop;

void my_loop_add(void* context, int64_t delay, orlan_id task) {
  static_cast<MyLoop*>(context)->tasks.emplace_back(delay, task);
}

int fail(const char* problem) {
  ADD_FAILURE() << problem;
  return 1;
}

void post(void* context, orlan_id task) {
  my_loop_add(context, 0, task);
}
void post_after(void* context, int64_t delay, orlan_id task) {
  my_loop_add(context, delay, task);  // microseconds
}

int start(orlan_phone** made) {
  orlan_loop_functions loop = {};
  loop.struct_size = sizeof loop;
  loop.context = &my_loop;
  loop.post = post;
  loop.post_after = post_after;

  orlan_phone_parts parts = {};
  parts.struct_size = sizeof parts;
  parts.loop = &loop;

  orlan_phone* phone = NULL;
  if (orlan_phone_new(&parts, &phone) != ORLAN_OK) return fail(orlan_last_problem());
  if (orlan_install(phone, NULL) != ORLAN_OK) return fail(orlan_last_problem());
  orlan_start_with_api_key(orlan_str("my-api-key"), ORLAN_STAGING, NULL, 0, NULL);
  *made = phone;
  return 0;
}

TEST(Guide, MakesAPhoneOfTwoFunctions) {
  orlan_phone* phone = nullptr;
  ASSERT_EQ(start(&phone), 0);
  const auto task = my_loop.tasks.at(0).second;
  EXPECT_EQ(orlan_phone_run(phone, task), ORLAN_OK);
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  EXPECT_EQ(orlan_phone_free(phone), ORLAN_OK);
}

}  // namespace
