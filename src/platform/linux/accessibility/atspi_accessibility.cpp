#include "platform/linux/accessibility/atspi_accessibility.h"

#include <unistd.h>

#include <algorithm>
#include <list>

#include "platform/linux/accessibility/atspi_late_layout.h"
#include "platform/linux/accessibility/atspi_reader.h"
#include "platform/linux/accessibility/atspi_writing.h"

namespace nimbletype {

class AtspiAccessibility::Impl {
 public:
  explicit Impl(double fontDotsPerInch)
      : focus_(bus_),
        reader_(bus_, focus_, fontDotsPerInch),
        lateLayout_([this](const AtspiRef& text) { changed(text); }),
        events_(bus_, [this](const AtspiEvent& e) { heard(e); }) {}

  struct Observer {
    std::int64_t process;
    Notification notify;
  };
  struct Watch {
    std::int64_t process;
    AtspiRef element;
  };
  // Lists, so that a task can name its entry by address.
  using Observers = std::list<std::shared_ptr<Observer>>;
  using Watches = std::list<std::shared_ptr<Watch>>;

  AtspiBus& bus() { return bus_; }
  AtspiReader& reader() { return reader_; }
  AtspiLateLayout& lateLayout() { return lateLayout_; }
  Observers& observers() { return observers_; }
  Watches& watches() { return watches_; }

 private:
  void heard(const AtspiEvent& event);
  void changed(const AtspiRef& text);
  void tell(std::int64_t process, std::string_view name, const AtspiRef& element);

  AtspiBus bus_;
  AtspiFocus focus_;
  AtspiReader reader_;
  Observers observers_;
  Watches watches_;
  AtspiLateLayout lateLayout_;
  AtspiEvents events_;  // last: nothing arrives before the rest is there
};

void AtspiAccessibility::Impl::heard(const AtspiEvent& event) {
  using Kind = AtspiEvent::Kind;
  const auto process = bus_.processOf(event.source->bus());
  if (!process || *process == getpid()) return;  // our own windows speak on the bus too
  const AtspiRichReader& rich = reader_.richReader();
  const bool isCaretOrKnown = event.kind == Kind::caretMoved || rich.hasRead(event.source);
  const auto isWatched = [&](const auto& watch) {
    const bool isPart = isCaretOrKnown && rich.isWithin(event.source, watch->element);
    return watch->process == *process && (isPart || sameObject(watch->element, event.source));
  };
  const bool watched = std::ranges::any_of(watches_, isWatched);
  reader_.forget(event.source);
  const AtspiFocus::Effect effect = focus_.heard(event);
  if (effect.window) tell(*process, "AXFocusedWindowChanged", event.source);
  if (effect.element) tell(*process, "AXFocusedUIElementChanged", event.source);
  if (!watched) return;
  if (event.kind == Kind::textChanged) tell(*process, "AXValueChanged", event.source);
  if (event.kind == Kind::caretMoved || event.kind == Kind::selectionChanged)
    tell(*process, "AXSelectedTextChanged", event.source);
}

void AtspiAccessibility::Impl::changed(const AtspiRef& text) {
  const auto watched =
      std::ranges::find_if(watches_, [&](const auto& w) { return sameObject(w->element, text); });
  if (watched != watches_.end()) tell((*watched)->process, "AXValueChanged", text);
}

// Observers may come and go while they are told.
void AtspiAccessibility::Impl::tell(std::int64_t process, std::string_view name, const AtspiRef& element) {
  for (const auto& observer : Observers(observers_)) {
    const bool present = std::ranges::find(observers_, observer) != observers_.end();
    if (present && observer->process == process) observer->notify(name, element);
  }
}

AtspiAccessibility::AtspiAccessibility(double fontDotsPerInch)
    : impl_(std::make_shared<Impl>(fontDotsPerInch)) {}

AtspiAccessibility::~AtspiAccessibility() = default;

bool AtspiAccessibility::isTrusted() {
  return impl_->bus().isOpen();
}

// This process's own windows are never read: nobody would answer while it waits.
ObjectRef AtspiAccessibility::application(std::int64_t processID) {
  if (processID == getpid()) return nullptr;
  const auto name = impl_->bus().applicationOf(processID, Deadline::in(messagingTimeout));
  return name ? std::make_shared<AtspiObject>(*name, AtspiObject::rootPath) : nullptr;
}

std::vector<AttributeValue> AtspiAccessibility::read(const ObjectRef& element,
                                                     std::span<const AttributeRead> reads) {
  return readWithin(messagingTimeout, element, reads);
}

std::vector<AttributeValue> AtspiAccessibility::readBriefly(const ObjectRef& element,
                                                            std::span<const AttributeRead> reads) {
  return readWithin(briefTimeout, element, reads);
}

std::vector<AttributeValue> AtspiAccessibility::readWithin(double seconds, const ObjectRef& element,
                                                           std::span<const AttributeRead> reads) {
  const AtspiRef object = atspiRef(element);
  if (!object || !impl_->bus().isOpen()) return std::vector<AttributeValue>(reads.size());
  auto values = impl_->reader().read(object, reads, Deadline::in(seconds));
  if (const auto found = impl_->reader().foundBoxes()) impl_->lateLayout().answered(object, *found);
  return values;
}

bool AtspiAccessibility::write(const ObjectRef& element, std::string_view attribute,
                               const AttributeValue& value) {
  const AtspiRef object = atspiRef(element);
  if (!object || !impl_->bus().isOpen()) return false;
  const Deadline deadline = Deadline::in(messagingTimeout);
  impl_->reader().forget(object);
  if (attribute == "AXSelectedText")
    if (const auto* text = std::get_if<std::string>(&value))
      return replaceSelection(impl_->bus(), object, *text, deadline);
  if (attribute == "AXSelectedTextRange")
    if (const auto* range = std::get_if<TextRange>(&value);
        range && !impl_->reader().richReader().isRich(object))
      return select(impl_->bus(), object, *range, deadline);
  if (attribute == "AXManualAccessibility" && value == AttributeValue(true) && object->isApplication())
    return wakeWebContent(impl_->bus(), object->bus(), deadline);
  return false;
}

std::optional<Task> AtspiAccessibility::observe(std::int64_t processID, Notification notify) {
  if (!application(processID)) return std::nullopt;
  auto observer = std::make_shared<Impl::Observer>(Impl::Observer{processID, std::move(notify)});
  impl_->observers().push_back(observer);
  return Task([weak = std::weak_ptr(impl_), observer] {
    if (const auto impl = weak.lock()) impl->observers().remove(observer);
  });
}

std::optional<Task> AtspiAccessibility::watch(std::int64_t processID, const ObjectRef& element) {
  const AtspiRef object = atspiRef(element);
  if (!object) return std::nullopt;
  auto watched = std::make_shared<Impl::Watch>(Impl::Watch{processID, object});
  impl_->watches().push_back(watched);
  return Task([weak = std::weak_ptr(impl_), watched] {
    if (const auto impl = weak.lock()) impl->watches().remove(watched);
  });
}

}  // namespace nimbletype
