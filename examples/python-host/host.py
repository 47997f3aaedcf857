#!/usr/bin/env python3
"""A host in Python: a small day of a phone that is written in Python, too, with virtual time.

    python3 host.py LIBRARY        (such as /usr/lib/liborlan.so)

Needs nothing but the standard library. Prints what a person would see on the phone.
"""
import ctypes as c
import heapq
import json
import math
import sys

# ---- The types of orlan/c/*.h that this host uses -------------------------------------------------------------------


class String(c.Structure):
    """Bytes and their number: a text may hold NUL. It lends what it was made of, and so keeps it."""

    _fields_ = [("data", c.c_void_p), ("length", c.c_size_t)]

    def __init__(self, text=None):
        super().__init__()
        if text is not None:
            self.kept = text.encode() if isinstance(text, str) else text
            self.data = c.cast(c.c_char_p(self.kept), c.c_void_p)
            self.length = len(self.kept)

    def __str__(self):
        return c.string_at(self.data, self.length).decode() if self.data else ""


def struct(name, *fields):
    return type(name, (c.Structure,), {"_fields_": list(fields)})


ID, Context, Size = c.c_uint64, c.c_void_p, c.c_size_t
Coordinate = struct("Coordinate", ("latitude", c.c_double), ("longitude", c.c_double))
Location = struct("Location", ("coordinate", Coordinate), ("accuracy", c.c_double), ("timestamp", c.c_int64))
Circle = struct("Circle", ("centre", Coordinate), ("radius", c.c_double))
Region = struct("Region", ("identifier", String), ("circle", Circle), ("on_entry", c.c_bool), ("on_exit", c.c_bool))
Error = struct("Error", ("domain", String), ("code", c.c_int64), ("description", String))
Notification = struct(
    "Notification", ("struct_size", Size), ("identifier", String), ("title", String), ("body", String),
    ("user_info", String), ("delay", c.c_int64), ("default_sound", c.c_bool), ("has_badge", c.c_bool),
    ("badge", c.c_int64), ("subtitle", String), ("sound", String), ("thread_identifier", String),
    ("category_identifier", String), ("target_content_identifier", String), ("launch_image_name", String),
    ("attachments", c.c_uint64))
Details = struct(
    "Details", ("struct_size", Size), ("id", String), ("headline", String), ("body", String), ("media_type", String), ("media_url", String),
    ("cta_label", String), ("cta_url", String), ("notification_id", c.c_int64), ("location_id", c.c_int64),
    ("questions", String), ("completion_message", String))
Request = struct("Request", ("struct_size", Size), ("method", String), ("url", String), ("headers", c.c_void_p),
                 ("header_count", Size), ("body", String), ("timeout", c.c_int64))
Reply = struct("Reply", ("struct_size", Size), ("status", c.c_int32), ("headers", c.c_void_p), ("header_count", Size),
               ("body", String))
Crossing = struct("Crossing", ("campaign_id", c.c_int64), ("location_id", c.c_int64))


def table(*functions):
    """A struct of function pointers: (name, result, argument types…); all of them take the context first."""
    fields = [(name, c.CFUNCTYPE(result, Context, *arguments)) for name, result, *arguments in functions]
    return struct("Table", ("struct_size", Size), ("context", Context), *fields)


def filled(kind, **functions):
    """The table with these functions in it; the library copies it, but the functions must stay."""
    made = kind()
    made.struct_size = c.sizeof(kind)
    for name, function in functions.items():
        setattr(made, name, dict(kind._fields_)[name](function))
    return made


Loop = table(("post", None, ID), ("post_after", None, c.c_int64, ID), ("cancel", None, ID), ("is_main", c.c_bool))
Queues = table(("post", None, ID, ID), ("made", None, ID, String), ("gone", None, ID))
Clock = table(("now", c.c_int64), ("offset_from_utc", c.c_int64, c.c_int64))
Http = table(("send", None, ID, c.POINTER(Request)), ("cancel", None, ID))
Places = table(
    ("authorization", c.c_int32), ("request_authorization", None, c.c_bool), ("made", None, ID, String),
    ("gone", None, ID), ("set_desired_accuracy", None, ID, c.c_double), ("set_distance_filter", None, ID, c.c_double),
    ("set_background_updates", None, ID, c.c_bool), ("set_updating", None, ID, c.c_bool),
    ("set_significant_changes", None, ID, c.c_bool), ("last_location", c.c_bool, c.POINTER(Location)),
    ("start_region", None, c.POINTER(Region)), ("stop_region", None, String), ("regions", None, c.c_void_p))
Center = table(("add", None, c.POINTER(Notification), ID), ("request_authorization", None, c.c_uint32, ID),
               ("authorization", None, ID))
Delegate = table(("did_authenticate", None, String, String), ("did_fail", None, c.POINTER(Error)))
PARTS = ["loop", "queues", "clock", "random", "store", "files", "http", "location", "notifications", "application",
         "device", "bundle", "log"]
Parts = struct("Parts", ("struct_size", Size), *[(part, c.c_void_p) for part in PARTS])
DetailsHandler = c.CFUNCTYPE(None, Context, c.POINTER(Details))
ALL_MANAGERS, ACTIVE, BACKGROUND, STAGING = ID(0), 0, 2, 1


class Library:
    """The functions of the library; a mistake becomes an exception with the library's own words."""

    def __init__(self, path):
        self.loaded = c.CDLL(path)
        self.loaded.orlan_last_problem.restype = c.c_char_p
        self.loaded.orlan_version.restype = c.c_char_p

    def __getattr__(self, name):
        function = getattr(self.loaded, "orlan_" + name)

        def checked(*arguments):
            status = function(*arguments)
            if status not in (0, 7):  # 7: a task or a call that nobody waits for any more
                raise RuntimeError(self.loaded.orlan_last_problem().decode())

        return checked


# ---- The phone ------------------------------------------------------------------------------------------------------

SECOND, MINUTE = 1_000_000, 60_000_000


class Phone:
    """A phone in memory. Its time passes only in `run_for`, and its queues are its main loop."""

    def __init__(self, library, start, backend):
        self.library, self.now, self.backend = library, start, backend
        self.tasks, self.posted, self.regions, self.inside = [], 0, {}, set()
        self.shown = []
        self.tables = {  # kept for as long as the phone: the library calls these functions
            "loop": filled(Loop, post=lambda _, task: self.post(0, task), post_after=lambda _, d, t: self.post(d, t)),
            "queues": filled(Queues, post=lambda _, queue, task: self.post(0, task)),
            "clock": filled(Clock, now=lambda _: self.now, offset_from_utc=lambda _, time: 0),
            "http": filled(Http, send=lambda _, call, request: self.send(call, request[0])),
            "location": filled(Places, start_region=lambda _, region: self.watch(region[0]),
                               stop_region=lambda _, name: self.regions.pop(str(name), None)),
            "notifications": filled(Center, add=lambda _, given, question: self.schedule(given[0], question)),
        }
        parts = Parts(c.sizeof(Parts))
        for name, made in self.tables.items():
            setattr(parts, name, c.addressof(made))
        self.handle = c.c_void_p()
        library.phone_new(c.byref(parts), c.byref(self.handle))

    def post(self, delay, task):
        self.posted += 1  # equal deadlines run in the order of posting
        run = task if callable(task) else lambda: self.library.phone_run(self.handle, ID(task))
        heapq.heappush(self.tasks, (self.now + max(delay, 0), self.posted, run))

    def run_for(self, duration):
        end = self.now + duration
        while self.tasks and self.tasks[0][0] <= end:
            self.now, _, run = heapq.heappop(self.tasks)
            run()
        self.now = end

    def send(self, call, request):
        status, body = self.backend(str(request.url))
        reply = Reply(c.sizeof(Reply), status)
        reply.body = String(body)
        kept = (reply, reply.body, body)
        self.post(SECOND // 20, lambda: self.library.phone_http_reply(self.handle, ID(call), c.byref(kept[0])))

    def watch(self, region):
        circle = region.circle
        self.regions[str(region.identifier)] = (circle.centre.latitude, circle.centre.longitude, circle.radius)

    def schedule(self, given, question):
        title, body, user_info = str(given.title), str(given.body), str(given.user_info)
        self.post(given.delay, lambda: self.show(title, body, user_info))
        self.library.phone_answer(self.handle, ID(question), c.c_int64(0), None)

    def show(self, title, body, user_info):
        clock = self.now // MINUTE % 1440
        print(f"{clock // 60:02}:{clock % 60:02}  {title} - {body}")
        self.shown.append((title, body, user_info))

    def move_to(self, latitude, longitude):
        fix = Location(Coordinate(latitude, longitude), 5.0, self.now)
        self.library.phone_fixes(self.handle, ALL_MANAGERS, c.byref(fix), Size(1))
        for name, (lat, lon, radius) in list(self.regions.items()):
            north, east = (latitude - lat) * 111_195, (longitude - lon) * 111_195 * math.cos(math.radians(lat))
            inside = math.hypot(north, east) <= radius
            if inside != (name in self.inside):
                self.inside.symmetric_difference_update({name})
                region = Region(String(name), Circle(Coordinate(lat, lon), radius), True, True)
                tell = self.library.phone_region_entered if inside else self.library.phone_region_exited
                tell(self.handle, ALL_MANAGERS, c.byref(region))
        self.run_for(SECOND)

    def tap_last(self):
        title, body, user_info = self.shown[-1]
        tapped = Notification(c.sizeof(Notification))
        kept = String(title), String(body), String(user_info)
        tapped.title, tapped.body, tapped.user_info = kept
        self.library.phone_tapped(self.handle, c.byref(tapped), String(), None, None)


# ---- The backend and the day ----------------------------------------------------------------------------------------


def campaign(number, name, latitude, longitude, *notifications):
    corners = [(-1, -1), (-1, 1), (1, 1), (1, -1)]
    ring = [{"position": i, "latitude": str(latitude + y * 0.001), "longitude": str(longitude + x * 0.001), "_id": ""}
            for i, (y, x) in enumerate(corners)]
    return {
        "campaignName": name, "campaignId": number, "type": "geofence", "locations": [number], "active": "true",
        "testIds": "", "segmentationTags": "",
        "locationsArray": {"locationId": number, "geofence": ring, "_id": ""},
        "notificationsArray": [
            {"id": number * 10 + i, "campaignId": [number], "headline": headline, "body": body, "type": "text",
             "media": [], "questions": [], "cta": [{"url": "https://shop.example", "label": "Show me", "_id": ""}],
             "segmentationTags": "", "testIds": "", "start": "", "end": "", "activation": activation}
            for i, (activation, headline, body) in enumerate(notifications)],
    }


CAMPAIGNS = {"geoCampaign": [
    campaign(1, "Bakery", 51.500, -0.120, ("ON_ENTER", "Good morning", "Warm rolls until nine."),
             ("ON_EXIT", "Have a good day", "We are open until six.")),
    campaign(2, "Museum", 51.510, -0.100, ("ON_ENTER", "Free entry today", "Your ticket is waiting.")),
], "pushCampaign": []}


def backend(url):
    if url.endswith("/create") and "registerd" in url:
        return 200, json.dumps({"data": {"device_id": "device-1", "orlan_id": "orlan-1"}})
    return 200, json.dumps(CAMPAIGNS) if url.endswith("/check-geofence") else "ok"


def main(path):
    library = Library(path)
    phone = Phone(library, start=1_767_254_400 * SECOND, backend=backend)  # 1 January 2026, 08:00
    phone.move_to(51.490, -0.120)
    library.install(phone.handle, None)

    delegate = filled(Delegate, did_authenticate=lambda _, device, orlan: print(f"started as {orlan}"),
                      did_fail=lambda _, error: print(f"not started: {error[0].description}"))
    details = DetailsHandler(lambda _, record: print(f"       tapped: {record[0].headline} [{record[0].cta_label}]"))
    subscription = c.c_void_p()
    library.subscribe_notifications(details, None, c.byref(subscription))
    library.start_with_api_key(String("api-key"), c.c_int64(STAGING), None, Size(0), c.byref(delegate))
    phone.run_for(MINUTE)

    phone.move_to(51.500, -0.120)  # into the bakery, the application in front
    phone.tap_last()
    phone.run_for(10 * MINUTE)
    phone.move_to(51.503, -0.120)
    phone.run_for(MINUTE)
    phone.move_to(51.500, -0.120)  # the keys were forgotten
    phone.move_to(51.503, -0.120)  # leaving again so soon is silent
    library.phone_move_to(phone.handle, c.c_int32(BACKGROUND))
    phone.run_for(120 * MINUTE)
    phone.move_to(51.510, -0.100)  # the phone itself watches the museum
    phone.run_for(30 * MINUTE)

    library.loaded.orlan_subscription_free(subscription)
    library.uninstall()
    library.phone_free(phone.handle)


if __name__ == "__main__":
    main(sys.argv[1])
