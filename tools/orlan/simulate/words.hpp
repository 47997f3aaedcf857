#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "orlan/platform/Application.hpp"
#include "phones/common/PhoneObserver.hpp"

/// The words that scenarios and transcripts have for things of the phone.
namespace orlan::simulate {

template <class T>
using Word = std::pair<std::string_view, T>;

inline constexpr auto applicationStates =
    std::to_array<Word<ApplicationState>>({{"active", ApplicationState::active},
                                           {"inactive", ApplicationState::inactive},
                                           {"background", ApplicationState::background}});

inline constexpr auto applicationSignals =
    std::to_array<Word<ApplicationSignal>>({{"didEnterBackground", ApplicationSignal::didEnterBackground},
                                            {"willEnterForeground", ApplicationSignal::willEnterForeground},
                                            {"didBecomeActive", ApplicationSignal::didBecomeActive},
                                            {"willResignActive", ApplicationSignal::willResignActive}});

inline constexpr auto regionActions =
    std::to_array<Word<phone::RegionAction>>({{"start", phone::RegionAction::start},
                                              {"stop", phone::RegionAction::stop},
                                              {"enter", phone::RegionAction::enter},
                                              {"exit", phone::RegionAction::exit}});

template <class Words, class T>
[[nodiscard]] constexpr std::string_view wordFor(const Words& words, T meaning) {
  for (const auto& [word, means] : words) {
    if (means == meaning) return word;
  }
  return {};
}

}  // namespace orlan::simulate
