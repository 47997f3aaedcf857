#include "tools/orlan/run/DetailsScreen.hpp"

#include <string>
#include <utility>

#include "orlan/sdk/OrlanPlugin.hpp"

namespace orlan::run {

void DetailsScreen::open(OrlanNotificationDetails details) {
  narrator_.opened(details, collector_.elapsed());
  survey_ = SurveyDialog(details.questions().value_or(std::vector<SurveyQuestion>()));
  details_ = std::move(details);
  ask();
}

void DetailsScreen::ask() {
  if (isAsking()) collector_.note("question", survey_.prompt());
}

void DetailsScreen::answer(std::string_view text) {
  if (!isAsking()) return say("no question is open");
  if (const auto taken = survey_.answer(text); !taken) return say(taken.error().description);
  collector_.note("answer", std::string(text));
  if (survey_.isAsking()) return ask();
  submit();
}

void DetailsScreen::submit() {
  const auto location = details_->locationID() == OrlanNotificationDetails::none
                            ? std::nullopt
                            : std::optional(std::to_string(details_->locationID()));
  sending_ = true;
  services_.plugin->submitSurveyResponse(
      std::to_string(details_->notifID()), location, survey_.answers(),
      [this, thanks = details_->completionMessage().value_or("thank you")](const Result<bool>& sent) {
        sending_ = false;
        collector_.note("survey", sent ? "sent: " + thanks : "not sent: " + sent.error().description);
      });
}

void DetailsScreen::openLink() {
  if (!details_ || !details_->ctaURL()) return say("there is no call to action to open");
  say("opens " + *details_->ctaURL());
  services_.notificationManager->trackCTAEngagement(details_->notifID(), details_->locationID());
}

void DetailsScreen::openMedia() {
  if (!details_ || !details_->mediaURL()) return say("there are no media to open");
  say("opens " + *details_->mediaURL());
  services_.notificationManager->trackMediaView(details_->notifID(), details_->locationID());
}

void DetailsScreen::close() {
  if (isAsking()) say("leaves the survey unanswered");
  details_.reset();
}

}  // namespace orlan::run
