#include "platform/linux/storage/secret_service_request.h"

#include <libsecret/secret.h>

#include <map>
#include <memory>
#include <utility>

#include "platform/linux/bus/glib_handle.h"

namespace nimbletype::secret_service {
namespace {

using ErrorPtr = std::unique_ptr<GError, GlibRelease<g_error_free>>;
using AttributesPtr = std::unique_ptr<GHashTable, GlibRelease<g_hash_table_unref>>;
using SecretPtr = std::unique_ptr<SecretValue, GlibRelease<secret_value_unref>>;
using ItemPtr = GObjectPtr<SecretItem>;
using Access = std::expected<void, SecretFailure>;
template <typename Answer>
using Handler = std::function<void(std::expected<Answer, SecretFailure>)>;

// Kept for good: requests refer to it for as long as they run.
const SecretSchema* schemaOf(const std::string& application) {
  static std::map<std::string, const SecretSchema*> made;
  const SecretSchema*& schema = made[application];
  if (!schema)
    schema = secret_schema_new(application.c_str(), SECRET_SCHEMA_NONE, "account",
                               SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
  return schema;
}

// What is under way. libsecret calls back even when it is cancelled, so everybody shares it.
template <typename Answer>
class Exchange : public std::enable_shared_from_this<Exchange<Answer>> {
 public:
  Exchange(MainLoop& loop, Place where, Handler<Answer> done)
      : place(std::move(where)), loop_(loop), done_(std::move(done)) {
    limit(patience);
  }

  void limit(Milliseconds time) {
    deadline_ = loop_.after(time, [this] { finish(std::unexpected(SecretFailure::unavailable)); });
  }
  // The first answer counts. Nothing of this object is touched after `done`, which may destroy its task.
  void finish(std::expected<Answer, SecretFailure> answer) {
    const auto alive = this->shared_from_this();
    const auto done = std::exchange(done_, nullptr);
    cancel();
    if (done) done(std::move(answer));
  }
  void cancel() {
    done_ = nullptr;
    deadline_ = {};
    g_cancellable_cancel(cancellable.get());
  }
  bool isOpen() const { return done_ != nullptr; }

  const Place place;
  const GObjectPtr<GCancellable> cancellable{g_cancellable_new()};

 private:
  MainLoop& loop_;
  Handler<Answer> done_;
  Task deadline_;
};

using Step = std::function<void(GAsyncResult*)>;

// libsecret's callback and its data: a step that runs once.
void run(GObject*, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Step> step(static_cast<Step*>(data));
  (*step)(result);
}

gpointer once(Step step) {
  return new Step(std::move(step));
}

AttributesPtr attributesOf(const Place& place) {
  return AttributesPtr(
      secret_attributes_build(schemaOf(place.application), "account", place.account.c_str(), nullptr));
}

SecretFailure failureOf(const GError* error) {
  // A question that the user declines counts as cancelled.
  const bool locked = !error || g_error_matches(error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED) ||
                      g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
  return locked ? SecretFailure::locked : SecretFailure::unavailable;
}

std::expected<ItemPtr, SecretFailure> foundBy(GAsyncResult* result) {
  GError* error = nullptr;
  GList* items = secret_service_search_finish(nullptr, result, &error);
  if (const ErrorPtr owned{error}) return std::unexpected(failureOf(error));
  ItemPtr first(items ? SECRET_ITEM(g_object_ref(items->data)) : nullptr);
  g_list_free_full(items, g_object_unref);
  return first;
}

// Calls `next` with the item, empty where there is none, unless the search fails or is too late.
template <typename Answer>
void search(const std::shared_ptr<Exchange<Answer>>& exchange, SecretSearchFlags flags,
            std::function<void(ItemPtr)> next) {
  Step step = [exchange, next = std::move(next)](GAsyncResult* result) {
    auto item = foundBy(result);
    if (!exchange->isOpen()) return;
    if (item)
      next(std::move(*item));
    else
      exchange->finish(std::unexpected(item.error()));
  };
  secret_service_search(nullptr, schemaOf(exchange->place.application), attributesOf(exchange->place).get(),
                        flags, exchange->cancellable.get(), run, once(std::move(step)));
}

// The end of a write or a removal.
void conclude(Exchange<void>& exchange, gboolean succeeded, GError* error) {
  const ErrorPtr owned{error};
  if (succeeded)
    exchange.finish({});
  else
    exchange.finish(std::unexpected(failureOf(error)));
}

std::expected<std::optional<std::string>, SecretFailure> secretOf(const ItemPtr& item) {
  if (!item) return std::nullopt;
  const SecretPtr value(secret_item_get_secret(item.get()));
  if (!value) {
    const bool locked = secret_item_get_locked(item.get());
    return std::unexpected(locked ? SecretFailure::locked : SecretFailure::unavailable);
  }
  gsize size = 0;
  const char* bytes = secret_value_get(value.get(), &size);
  return std::string(bytes, size);
}

void store(const std::shared_ptr<Exchange<void>>& exchange, const std::string& secret) {
  exchange->limit(patienceWithUser);
  const std::string label = "Nimbletype: " + exchange->place.account;
  const SecretPtr value(
      secret_value_new(secret.data(), static_cast<gssize>(secret.size()), "application/octet-stream"));
  secret_service_store(nullptr, schemaOf(exchange->place.application), attributesOf(exchange->place).get(),
                       SECRET_COLLECTION_DEFAULT, label.c_str(), value.get(), exchange->cancellable.get(),
                       run, once([exchange](GAsyncResult* result) {
                         GError* error = nullptr;
                         const gboolean stored = secret_service_store_finish(nullptr, result, &error);
                         conclude(*exchange, stored, error);
                       }));
}

void clear(const std::shared_ptr<Exchange<void>>& exchange) {
  secret_service_clear(nullptr, schemaOf(exchange->place.application), attributesOf(exchange->place).get(),
                       exchange->cancellable.get(), run, once([exchange](GAsyncResult* result) {
                         GError* error = nullptr;
                         const gboolean cleared = secret_service_clear_finish(nullptr, result, &error);
                         conclude(*exchange, cleared, error);
                       }));
}

template <typename Answer>
Task ownerOf(const std::shared_ptr<Exchange<Answer>>& exchange) {
  return Task([exchange] { exchange->cancel(); });
}

}  // namespace

Task read(MainLoop& loop, const Place& place, SecretStore::ReadHandler done) {
  using Reading = Exchange<std::optional<std::string>>;
  const auto exchange = std::make_shared<Reading>(loop, place, std::move(done));
  search<std::optional<std::string>>(exchange, SECRET_SEARCH_LOAD_SECRETS,
                                     [exchange](const ItemPtr& item) { exchange->finish(secretOf(item)); });
  return ownerOf(exchange);
}

// The search before shows whether anybody answers, before the user's time is allowed for.
Task write(MainLoop& loop, const Place& place, const std::string& secret, SecretStore::WriteHandler done) {
  const auto exchange = std::make_shared<Exchange<void>>(loop, place, std::move(done));
  search<void>(exchange, SECRET_SEARCH_NONE, [exchange, secret](const ItemPtr&) { store(exchange, secret); });
  return ownerOf(exchange);
}

Task remove(MainLoop& loop, const Place& place, SecretStore::WriteHandler done) {
  const auto exchange = std::make_shared<Exchange<void>>(loop, place, std::move(done));
  search<void>(exchange, SECRET_SEARCH_NONE, [exchange](const ItemPtr& item) {
    if (!item)
      exchange->finish({});
    else if (secret_item_get_locked(item.get()))
      exchange->finish(std::unexpected(SecretFailure::locked));
    else
      clear(exchange);
  });
  return ownerOf(exchange);
}

}  // namespace nimbletype::secret_service
