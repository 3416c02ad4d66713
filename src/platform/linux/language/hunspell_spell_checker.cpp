#include "platform/linux/language/hunspell_spell_checker.h"

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>

#include "platform/linux/language/hunspell_dictionary.h"

namespace nimbletype {

namespace {

constexpr std::size_t mostRemembered = 1000;

std::string userLanguage() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (const char* value = std::getenv(name); value && *value) return localeLanguage(value);
  return {};
}

}  // namespace

// The dictionary for corrections stays on the worker's thread; the one for checking is loaded there as well
// and then used by the main thread alone.
class HunspellWorker {
 public:
  using Answer = std::function<void(std::string word, std::optional<std::string> correction)>;

  HunspellWorker(std::string language, Answer answer)
      : answer_(std::move(answer)), thread_([this, language = std::move(language)] { work(language); }) {}
  ~HunspellWorker() {
    {
      std::lock_guard lock(mutex_);
      stopped_ = true;
    }
    changed_.notify_one();
    thread_.join();
  }

  void lookUp(std::string_view word) {
    {
      std::lock_guard lock(mutex_);
      words_.emplace_back(word);
    }
    changed_.notify_one();
  }

  // None until it has been loaded.
  const HunspellDictionary* checking() const {
    return loaded_.load(std::memory_order_acquire) ? checking_.get() : nullptr;
  }

 private:
  void work(const std::string& language) {
    const auto path = findDictionary(language);
    if (!path) return;
    checking_ = std::make_unique<HunspellDictionary>(*path);
    loaded_.store(true, std::memory_order_release);
    const HunspellDictionary correcting(*path);
    while (const auto word = next()) answer_(*word, correcting.correction(*word));
  }

  std::optional<std::string> next() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopped_ || !words_.empty(); });
    if (stopped_) return std::nullopt;
    std::string word = std::move(words_.front());
    words_.pop_front();
    return word;
  }

  Answer answer_;
  std::unique_ptr<HunspellDictionary> checking_;
  std::atomic<bool> loaded_ = false;
  std::mutex mutex_;  // guards what follows up to the thread
  std::condition_variable changed_;
  std::deque<std::string> words_;
  bool stopped_ = false;
  std::thread thread_;
};

HunspellSpellChecker::HunspellSpellChecker(MainLoop& loop, std::string language)
    : self_(std::make_shared<HunspellSpellChecker*>(this)) {
  auto answer = [&loop, self = std::weak_ptr(self_)](std::string word,
                                                     std::optional<std::string> correction) {
    loop.post([self, word = std::move(word), correction = std::move(correction)]() mutable {
      if (const auto checker = self.lock()) (*checker)->remember(word, std::move(correction));
    });
  };
  worker_ = std::make_unique<HunspellWorker>(language.empty() ? userLanguage() : std::move(language), answer);
}

HunspellSpellChecker::~HunspellSpellChecker() = default;

bool HunspellSpellChecker::isReady() const {
  return worker_->checking() != nullptr;
}

bool HunspellSpellChecker::isMisspelled(std::string_view word) {
  const HunspellDictionary* dictionary = worker_->checking();
  return dictionary && dictionary->isMisspelled(word);
}

std::optional<std::string> HunspellSpellChecker::correction(std::string_view word) {
  if (const auto known = corrections_.find(word); known != corrections_.end()) return known->second;
  if (isReady() && lookingUp_.emplace(word).second) worker_->lookUp(word);
  return std::nullopt;
}

void HunspellSpellChecker::remember(const std::string& word, std::optional<std::string> correction) {
  lookingUp_.erase(word);
  if (corrections_.size() >= mostRemembered) corrections_.clear();
  corrections_.insert_or_assign(word, std::move(correction));
  if (found_) found_();
}

}  // namespace nimbletype
