#include "host/dialogs/DialogMessages.hpp"

#include <cerrno>
#include <string_view>

#include <glib.h>
#include <sys/socket.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

namespace {

constexpr auto kFormat = "(yaxaay)";

using Variant = Owned<GVariant, g_variant_unref>;

GVariant* bytesOf(const std::string& text) {
  return g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, text.data(), text.size(), 1);
}

Variant packed(const DialogMessage& message) {
  GVariantBuilder texts;
  g_variant_builder_init(&texts, G_VARIANT_TYPE("aay"));
  for (const auto& text : message.texts) {
    g_variant_builder_add_value(&texts, bytesOf(text));
  }
  auto* numbers = g_variant_new_fixed_array(G_VARIANT_TYPE_INT64, message.numbers.data(),
                                            message.numbers.size(), sizeof(std::int64_t));
  return Variant(g_variant_ref_sink(g_variant_new("(y@axaay)", message.kind, numbers, &texts)));
}

/// Returns nothing if the bytes are not exactly one message.
std::optional<DialogMessage> unpacked(std::string_view bytes) {
  const Owned<GBytes, g_bytes_unref> copy(g_bytes_new(bytes.data(), bytes.size()));
  const Variant variant(
      g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(kFormat), copy.get(), FALSE)));
  if (!g_variant_is_normal_form(variant.get())) {
    return std::nullopt;
  }
  guchar kind = 0;
  GVariant* numberArray = nullptr;
  GVariant* textArray = nullptr;
  g_variant_get(variant.get(), "(y@ax@aay)", &kind, &numberArray, &textArray);
  const Variant numbers(numberArray);
  const Variant texts(textArray);
  if (kind > static_cast<guchar>(DialogMessage::kLastKind)) {
    return std::nullopt;
  }
  DialogMessage message{static_cast<DialogMessage::Kind>(kind), {}, {}};
  gsize count = 0;
  const auto* first = static_cast<const std::int64_t*>(
      g_variant_get_fixed_array(numbers.get(), &count, sizeof(std::int64_t)));
  message.numbers.assign(first, first + count);
  for (gsize i = 0; i < g_variant_n_children(texts.get()); ++i) {
    const Variant text(g_variant_get_child_value(texts.get(), i));
    const auto* data = static_cast<const char*>(g_variant_get_fixed_array(text.get(), &count, 1));
    message.texts.emplace_back(data, data + count);
  }
  return message;
}

}  // namespace

bool sendDialogMessage(int socket, const DialogMessage& message) {
  const auto variant = packed(message);
  const auto size = g_variant_get_size(variant.get());
  if (size > kLargestDialogMessage) {
    return false;
  }
  ssize_t sent = 0;
  do {
    sent = send(socket, g_variant_get_data(variant.get()), size, MSG_NOSIGNAL);
  } while (sent < 0 && errno == EINTR);
  return sent == static_cast<ssize_t>(size);
}

std::optional<DialogMessage> receiveDialogMessage(int socket) {
  std::string bytes(kLargestDialogMessage, '\0');
  ssize_t size = 0;
  do {
    // With MSG_TRUNC a message that is too long is cut, but its full length is returned.
    size = recv(socket, bytes.data(), bytes.size(), MSG_TRUNC);
  } while (size < 0 && errno == EINTR);
  if (size <= 0 || static_cast<std::size_t>(size) > bytes.size()) {
    return std::nullopt;
  }
  return unpacked(std::string_view(bytes).substr(0, static_cast<std::size_t>(size)));
}

}  // namespace nivlo
