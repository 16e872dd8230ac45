#include "platform/x11/WindowProperties.h"

#include <xcb/res.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace tavin::x11 {
namespace {

constexpr std::uint32_t longestProperty = 65536;  // In 32-bit units.

Reply<xcb_get_property_reply_t> getProperty(const Connection& connection, xcb_window_t window,
                                            xcb_atom_t property) {
  xcb_connection_t* c = connection.get();
  return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(
      c, xcb_get_property(c, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
      nullptr));
}

// The processes of one client, or with no resource of all.
std::vector<std::int64_t> processIds(const Connection& connection, std::uint32_t resource) {
  xcb_connection_t* c = connection.get();
  if (connection.extension(xcb_res_id) == nullptr)
    return {};
  const xcb_res_client_id_spec_t which{resource, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const Reply<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(c, xcb_res_query_client_ids(c, 1, &which), nullptr));
  std::vector<std::int64_t> ids;
  if (!reply)
    return ids;
  auto entry = xcb_res_query_client_ids_ids_iterator(reply.get());
  for (; entry.rem > 0; xcb_res_client_id_value_next(&entry)) {
    if ((entry.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
        xcb_res_client_id_value_value_length(entry.data) > 0)
      ids.push_back(*xcb_res_client_id_value_value(entry.data));
  }
  return ids;
}

}  // namespace

std::vector<std::uint32_t> unitsProperty(const Connection& connection, xcb_window_t window,
                                         xcb_atom_t property) {
  const auto reply = getProperty(connection, window, property);
  std::vector<std::uint32_t> units;
  if (reply && reply->format == 32) {
    units.resize(reply->value_len);
    std::memcpy(units.data(), xcb_get_property_value(reply.get()),
                units.size() * sizeof(std::uint32_t));
  }
  return units;
}

std::string textProperty(const Connection& connection, xcb_window_t window, xcb_atom_t property) {
  const auto reply = getProperty(connection, window, property);
  if (!reply || reply->format != 8)
    return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

std::vector<std::string> windowClass(const Connection& connection, xcb_window_t window) {
  std::string text = textProperty(connection, window, XCB_ATOM_WM_CLASS);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  std::vector<std::string> names;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\0', start), text.size());
    names.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

std::int64_t clientProcess(const Connection& connection, std::uint32_t resource) {
  const auto ids = processIds(connection, resource);
  return ids.empty() ? 0 : ids.front();
}

std::vector<std::int64_t> clientProcesses(const Connection& connection) {
  return processIds(connection, XCB_NONE);
}

std::uint32_t clientOf(const Connection& connection, std::uint32_t resource) {
  return resource & ~xcb_get_setup(connection.get())->resource_id_mask;
}

bool sameClient(const Connection& connection, std::uint32_t one, std::uint32_t other) {
  return clientOf(connection, one) == clientOf(connection, other);
}

}  // namespace tavin::x11
