#!/usr/bin/env python3
"""Turns the ward outlines beside this file into hampshire-campaigns.json, the answer that the demonstration's
backend gives to /check-geofence. Run it after changing a text; the result is committed."""

import json
import pathlib

HERE = pathlib.Path(__file__).parent

# Texts for the wards that the recorded ride crosses: (entry headline, entry body, exit headline, exit body).
STORIES = {
    "St Michael": (
        "Good morning, Winchester",
        "Coffee is half price at the Cathedral Refectory until noon.",
        "Leaving the old town?",
        "Your coffee stamp is saved for the next visit.",
    ),
    "St John and All Saints": (
        "St Giles Hill is just above you",
        "Five minutes up, and the whole city at your feet. Here is the path.",
        "How was the view?",
        "One question about St Giles Hill, ten seconds.",
    ),
    "Itchen Valley": (
        "Welcome to the Itchen Valley",
        "Chalk stream ahead: the watercress stalls in Alresford are open today.",
        "Goodbye from the Itchen Valley",
        "Thank you for keeping to the paths. See you soon.",
    ),
    "Overton, Laverstoke and Steventon": (
        "Silk Mill country",
        "Guided tour at three. Show this message for two tickets at the price of one.",
        "Safe travels from Overton",
        "The mill shop ships to your door.",
    ),
    "Whitchurch": (
        "You made it to Whitchurch",
        "32 kilometres! Cyclists get a free slice of cake at the station cafe.",
        "Back on the road",
        "Whitchurch waves you goodbye.",
    ),
}

# Questions that come with an entry: (text, type, labels of the choices).
QUESTIONS = {
    "Whitchurch": (
        ("How was the road?", "RATING", ()),
        ("Which cake shall it be?", "SINGLE_CHOICE", ("Lemon drizzle", "Victoria sponge", "Carrot")),
        ("Anything we should mend on the way?", "OPEN_ENDED", ()),
    ),
}

# A push campaign: shown wherever the phone is.
PUSH = (
    "Hampshire by bicycle",
    "Five towns between Winchester and Whitchurch have something for you today.",
)


def vertices(ring):
    """The ring without its closing repetition, as the backend writes vertices: numbers as texts."""
    if ring[0] == ring[-1]:
        ring = ring[:-1]
    return [
        {"position": i, "latitude": repr(lat), "longitude": repr(lon), "_id": f"v{i}"}
        for i, (lon, lat) in enumerate(ring)
    ]


def notification(identifier, campaign, headline, body, activation, media=(), questions=(), cta=()):
    return {
        "id": identifier, "campaignId": [campaign], "headline": headline, "body": body, "type": "notification",
        "media": list(media), "questions": list(questions), "cta": list(cta), "segmentationTags": "", "testIds": "",
        "start": "2019-11-01", "end": "2030-12-31", "activation": activation, "_id": f"n{identifier}",
        "published": True,
    }


def questions(number, asked):
    return [
        {"id": number * 10 + i, "question": text, "question_type": kind, "has_choices": bool(labels), "position": i,
         "choices": [{"id": number * 100 + i * 10 + j, "choice": label, "position": j}
                     for j, label in enumerate(labels)]}
        for i, (text, kind, labels) in enumerate(asked)
    ]


def wrapper(identifier, name, kind, locations, notifications):
    return {
        "campaignName": name, "campaignId": identifier, "type": kind, "locations": locations, "active": "true",
        "testIds": "", "segmentationTags": "", "notificationsArray": notifications,
    }


def push_campaign():
    headline, body = PUSH
    cta = [{"url": "https://offers.example/hampshire", "label": "See the map", "_id": "cp"}]
    return wrapper(900, headline, "push", [], [notification(1900, 900, headline, body, "PUSH", cta=cta)])


def campaign(number, name, ring):
    story = STORIES.get(name, (f"Welcome to {name}", "Have a look around.", f"Goodbye, {name}", "See you soon."))
    key = name.split(",")[0].lower().replace(" ", "-")
    media = [{"type": "image", "url": f"https://media.example/{key}.jpg", "_id": f"m{number}"}]
    cta = [{"url": f"https://offers.example/{key}", "label": "Show me", "_id": f"c{number}"}]
    rating = (f"How did you like {name}?", "RATING", ())
    made = wrapper(100 + number, name, "geofence", [500 + number], [
        notification(1000 + 2 * number, 100 + number, story[0], story[1], "ON_ENTER", media=media, cta=cta,
                     questions=questions(number, QUESTIONS.get(name, ()))),
        notification(1001 + 2 * number, 100 + number, story[2], story[3], "ON_EXIT",
                     questions=questions(100 + number, [rating])),
    ])
    made["locationsArray"] = {"locationId": 500 + number, "geofence": vertices(ring), "_id": f"l{number}"}
    return made


def main():
    features = []
    for name in ("wards-winchester-a.geojson", "wards-basingstoke-deane.geojson"):
        features += json.loads((HERE / name).read_text(encoding="utf-8"))["features"]
    answer = {
        "geoCampaign": [
            campaign(i + 1, f["properties"]["WD13NM"], f["geometry"]["coordinates"][0]) for i, f in enumerate(features)
        ],
        "pushCampaign": [push_campaign()],
    }
    text = json.dumps(answer, ensure_ascii=False, separators=(",", ":"))
    (HERE / "hampshire-campaigns.json").write_text(text + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
