"""The paths of the HTTP interface. Every answer is JSON; `guard.py` stands before it."""

from aiohttp import web

from tavin.engine import Refusal
from tavin.http.guard import LARGEST_BODY, json_body


def application(engine):
    app = web.Application(client_max_size=LARGEST_BODY)
    routes = Routes(engine)
    app.add_routes(
        [
            web.get("/status", routes.status),
            web.get("/voices", routes.voices),
            web.post("/speak", routes.speak),
            web.post("/stop", routes.stop),
            web.post("/toggle-pause", routes.toggle_pause),
            web.post("/next", routes.next),
            web.post("/previous", routes.previous),
            web.post("/repeat", routes.repeat),
            web.post("/faster", routes.faster),
            web.post("/slower", routes.slower),
            web.post("/config", routes.config),
            web.post("/key", routes.key),
        ]
    )
    return app


class Routes:
    def __init__(self, engine):
        self._engine = engine

    async def status(self, _request):
        return web.json_response(self._engine.status())

    async def voices(self, request):
        return web.json_response(await self._engine.voices(request.query.get("engine")))

    async def speak(self, request):
        text = (await json_body(request)).get("text")
        if not isinstance(text, str):
            raise Refusal("The text is missing.")
        self._engine.speak(text)
        return done()

    async def stop(self, request):
        await json_body(request)
        self._engine.stop()
        return done()

    async def toggle_pause(self, request):
        await json_body(request)
        self._engine.toggle_pause()
        return done()

    async def next(self, request):
        self._engine.next((await json_body(request)).get("by", "sentence"))
        return done()

    async def previous(self, request):
        self._engine.previous((await json_body(request)).get("by", "sentence"))
        return done()

    async def repeat(self, request):
        await json_body(request)
        self._engine.repeat()
        return done()

    async def faster(self, request):
        await json_body(request)
        await self._engine.faster()
        return done()

    async def slower(self, request):
        await json_body(request)
        await self._engine.slower()
        return done()

    async def config(self, request):
        await self._engine.configure(await json_body(request))
        return done()

    async def key(self, request):
        body = await json_body(request)
        await self._engine.store_key(body.get("engine"), body.get("key"))
        return done()


def done():
    return web.json_response({"ok": True})
