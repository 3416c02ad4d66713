#include "platform/scripted/on_device/scripted_on_device_model.h"

#include <utility>

namespace nimbletype {

void ScriptedOnDeviceModel::willRefuse(Milliseconds delay) {
  answers.push_back({std::unexpected(Failure{true, ""}), delay});
}

void ScriptedOnDeviceModel::willFail(std::string text, Milliseconds delay) {
  answers.push_back({std::unexpected(Failure{false, std::move(text)}), delay});
}

Task ScriptedOnDeviceModel::respond(const Request& request, Handler done) {
  requests.push_back(request);
  const auto answered = std::make_shared<bool>(false);
  auto timer = std::make_shared<Task>();
  if (!answers.empty()) {
    const Answer answer = std::move(answers.front());
    answers.pop_front();
    *timer = loop_.after(answer.delay, [answered, done = std::move(done), result = answer.result] {
      *answered = true;
      done(result);
    });
  }
  return Task([answered, timer, cancelled = cancelled_] {
    if (!*answered) ++*cancelled;
    timer->cancel();
  });
}

}  // namespace nimbletype
