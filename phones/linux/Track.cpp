#include "phones/linux/Track.hpp"

#include "orlan/base/text.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

constexpr std::size_t longestTrack = std::size_t{256} << 20;  // bytes

bool looksLikeXml(std::string_view bytes) {
  if (bytes.starts_with("\xff\xfe") || bytes.starts_with("\xfe\xff")) return true;
  if (bytes.starts_with("\xef\xbb\xbf")) bytes.remove_prefix(3);
  const auto start = bytes.find_first_not_of(" \t\r\n");
  return start != bytes.npos && bytes[start] == '<';
}

}  // namespace

Result<Track> readTrack(const std::string& path) {
  auto wrong = [&](const std::string& what) {
    return Unexpected(Error{"Track", -1, text::escapedControls(path + ": " + what)});
  };
  const auto bytes = disk::read(path, longestTrack);
  if (!bytes) return wrong(bytes.error().message());
  if (bytes->empty()) return wrong("the file is empty");
  auto track = looksLikeXml(*bytes) ? parseGpx(*bytes) : parseNmea(*bytes);
  if (!track) return wrong(track.error());
  return std::move(*track);
}

}  // namespace orlan::linuxphone
