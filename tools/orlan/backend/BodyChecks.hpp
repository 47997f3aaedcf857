#pragma once

#include <string>
#include <string_view>

#include "tools/orlan/backend/Request.hpp"

/// One check an endpoint; each adds what is wrong with the body to `problems`, in the order in which it
/// stands there. They know nothing of the library that sends: a mistake there must not repeat itself here.
namespace orlan::devbackend {

/// The device record: fifteen texts, the key the one of the header.
void checkDeviceRecord(const Request& request, Problems& problems);

/// {"segmentation": [texts], "device_registered_id": text}
void checkSegments(const Request& request, Problems& problems);

/// A survey's answers or an event without them.
void checkSurveyResponse(const Request& request, Problems& problems);

/// Position as two texts, segmentation tags, and the distance, always 10.
void checkGeofenceQuestion(const Request& request, Problems& problems);

/// Eight text parts, byte for byte. Content type and boundary included.
void checkActivityUpload(const Request& request, Problems& problems);

/// device_registered_id=…&time=…&activity=…, nothing escaped.
void checkPluginActivity(const Request& request, Problems& problems);

/// The boundary that the content type names, whatever its form; empty when it names none.
[[nodiscard]] std::string boundaryOf(const Request& request);

}  // namespace orlan::devbackend
