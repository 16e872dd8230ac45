"""Keeps everything but Tavin away from the port.

A web page open in a browser can send requests to the loopback interface. It
cannot leave out Origin or Sec-Fetch-*, nor, without a preflight that is never
answered, add X-Tavin; and a name that it made resolve to 127.0.0.1 shows in Host.
"""

import asyncio
import functools
import json
import re

from aiohttp import web

from tavin.engine import Refusal
from tavin.log import log

PORT = 47632
HOSTS = {f"127.0.0.1:{PORT}", f"localhost:{PORT}"}
LARGEST_BODY = 64 * 1024 * 1024
BODY_SECONDS = 30.0
FAR = 12  # bytes: as long as a pair of escapes
STEP = 1 << 19  # bytes that are decoded without a look at other requests: some milliseconds
TEXT_BEGINS = re.compile(rb'\s*\{\s*"text"\s*:\s*"')
TEXT_ENDS = re.compile(rb'"\s*\}\s*\Z')


def refused(status, text):
    return web.json_response({"error": text}, status=status)


def objection(request):
    """Why this request is not Tavin's; None when it may be."""
    hosts = request.headers.getall("Host", [])
    if len(hosts) != 1 or hosts[0].lower() not in HOSTS:
        return "This host name is not served."
    for name in request.headers:
        if name.lower() == "origin" or name.lower().startswith("sec-fetch-"):
            return "Web pages are not served."
    if request.method not in ("GET", "HEAD") and request.headers.getall("X-Tavin", []) != ["1"]:
        return "The header X-Tavin is missing."
    return None


def guarded(handle):
    """`handle`, which is aiohttp's with all of its own answers, for Tavin's requests only.

    A failure is answered with a JSON object.
    """

    @functools.wraps(handle)
    async def guard(request):
        text = objection(request)
        if text:
            return refused(403, text)
        try:
            return await handle(request)
        except Refusal as refusal:
            return refused(400, str(refusal))
        except web.HTTPException as failure:
            return refused(failure.status, failure.reason)
        except ConnectionError:
            raise  # the client is gone: nobody to answer
        except Exception:
            log.exception("a request failed")
            return refused(500, "The engine failed to carry this out.")

    return guard


class Connection(web.RequestHandler):
    """A client's connection. What is no HTTP is answered in JSON as well."""

    def handle_error(self, request, status=500, exc=None, message=None):
        if request.writer.output_size:
            raise ConnectionError  # in the midst of an answer there is no place for another
        response = refused(status, "This is no request." if status < 500 else "The engine failed.")
        response.force_close()
        return response


async def json_body(request):
    """The request's body, a JSON object; Refusal for anything else."""
    try:
        async with asyncio.timeout(BODY_SECONDS):
            data = await whole(request)
    except TimeoutError:
        raise web.HTTPRequestTimeout from None
    try:
        body = await decoded(data)
    except (ValueError, RecursionError):
        raise Refusal("The body is not JSON.") from None
    if not isinstance(body, dict):
        raise Refusal("The body is not a JSON object.")
    return body


async def whole(request):
    """The body's bytes; a long one is read on only where it begins as a text."""
    data = bytearray()
    try:
        while chunk := await request.content.readany():
            data += chunk
            if len(data) > LARGEST_BODY:
                raise web.HTTPRequestEntityTooLarge(LARGEST_BODY, len(data))
            if len(data) > STEP and not TEXT_BEGINS.match(data):
                raise too_long()
    except BaseException:
        data.clear()  # who keeps the failure keeps this frame
        raise
    return data


def too_long():
    """Other objects need ten times the time and the memory, and Tavin sends none."""
    return Refusal("A body this long must be an object with one text.")


async def decoded(data):
    """`json.loads`, which holds up everything else, a thread too; a long text's in steps."""
    if len(data) <= STEP:
        return json.loads(data, parse_constant=_no_constant)
    begins, ends = TEXT_BEGINS.match(data), TEXT_ENDS.search(data, max(0, len(data) - 64))
    if not begins or not ends or begins.end() > ends.start():
        raise too_long()
    try:
        return {"text": await decoded_text(data, begins.end(), ends.start())}
    except ValueError:
        raise too_long() from None  # it is more than one text, or none


async def decoded_text(data, begin, end):
    """A long string's inside."""
    parts = []
    while begin < end:
        cut = end if end - begin <= STEP else boundary(data, begin, end)
        parts.append(json.loads(b'"%s"' % data[begin:cut]))
        begin = cut
        await asyncio.sleep(0)
    return "".join(parts)


def boundary(data, begin, end):
    """Where to cut a string before `end`: in no escape, in no pair of them and in no character.

    A blank is no part of these. In a script without blanks a place far from escapes serves; where
    there is none the rest is one piece, which takes less than a second.
    """
    cut = data.rfind(b" ", begin, begin + STEP) + 1
    if cut:
        return cut
    for cut in range(begin + STEP, begin + STEP - FAR, -1):
        if data[cut] & 0xC0 != 0x80 and b"\\" not in data[max(begin, cut - FAR) : cut]:
            return cut
    return end


def _no_constant(name):
    raise ValueError(name)  # NaN and Infinity are not JSON
