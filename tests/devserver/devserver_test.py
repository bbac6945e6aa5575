#!/usr/bin/python3
"""End-to-end checks of vantory-devserver through an independent SOAP client:
Debian's python3-zeep, reading our service description, calls every
operation of a running server; raw HTTP (requests) looks at what zeep hides.
HTTPS and many users at once are run through floorxport (tests/exchange and
the devserver_load benchmark).

Usage: devserver_test.py SERVER_BINARY WSDL SAMPLE_DXF TEMP_DIR

Needs Debian's python3-zeep, hence /usr/bin/python3. Prints one line per
check and a closing "N passed, M failed"; exits non-zero on any failure.
"""

import json
import os
import select
import signal
import socket
import sqlite3
import subprocess
import sys
import threading
import time
import traceback
import urllib.parse
from pathlib import Path

import requests
import zeep
from requests.auth import HTTPBasicAuth
from zeep.transports import Transport

binary, wsdl, sample, temp_dir = (Path(arg).resolve() for arg in sys.argv[1:5])
temp_dir.mkdir(parents=True, exist_ok=True)

SOAP_PATH = "external/api/soap/space/drawing/v1"
ROOMS_PATH = "external/api/rest/v2/rooms"
BINDING = "{http://soap.vantory.example/}DrawingAPIPortBinding"
NS = "http://soap.vantory.example/"
MIB = 1 << 20

# Raw HTTP, blind to the environment's proxies and certificate bundles.
http = requests.Session()
http.trust_env = False


class Server:
    """A vantory-devserver on a free port; its first output line gives the URL."""

    def __init__(self, db, *args):
        self.log = open(temp_dir / f"{Path(db).stem}.log", "ab")
        self.process = subprocess.Popen(
            [str(binary), "--db", str(db), "--port", "0", *args],
            stdout=subprocess.PIPE, stderr=self.log)
        ready, _, _ = select.select([self.process.stdout], [], [], 30)
        line = self.process.stdout.readline().decode() if ready else ""
        assert line.startswith("vantory-devserver: listening on "), f"no URL line: {line!r}"
        self.url = line.split(" on ", 1)[1].strip()
        self.port = urllib.parse.urlparse(self.url).port

    def stop(self, sig=signal.SIGTERM):
        self.process.send_signal(sig)
        code = self.process.wait(timeout=60)
        self.log.close()
        if code != 0:  # what the server said, for the failure that follows
            print(f"server exit {code}; its log ends:\n{Path(self.log.name).read_text()[-2000:]}")
        return code

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()


def fresh_db(name):
    (temp_dir / f"{Path(name).stem}.log").unlink(missing_ok=True)
    for suffix in ("", "-wal", "-shm"):
        Path(f"{temp_dir / name}{suffix}").unlink(missing_ok=True)
    return temp_dir / name


def service(server, auth=None):
    session = requests.Session()
    session.trust_env = False
    session.auth = auth
    client = zeep.Client(str(wsdl), transport=Transport(session=session))
    return client.create_service(BINDING, server.url + SOAP_PATH)


def envelope(operation, body):
    return (f'<?xml version="1.0" encoding="UTF-8"?><s:Envelope '
            f'xmlns:s="http://schemas.xmlsoap.org/soap/envelope/"><s:Body><ns1:{operation} '
            f'xmlns:ns1="{NS}">{body}</ns1:{operation}></s:Body></s:Envelope>')


def mtom_upload(floor, dwg, drawing=b""):
    """A setDrawing request with both binaries as MTOM attachments."""
    boundary = "test-boundary-8f2a"
    root = envelope("setDrawing", (
        f"<floorId>{floor}</floorId>"
        '<dwgFile><xop:Include xmlns:xop="http://www.w3.org/2004/08/xop/include" '
        'href="cid:dwg@test"/></dwgFile>'
        '<drawingFile><xop:Include xmlns:xop="http://www.w3.org/2004/08/xop/include" '
        'href="cid:drawing@test"/></drawingFile>'
        "<drawingNotes>MTOM</drawingNotes><binaryFormat>dwg</binaryFormat>"))
    parts = [(f"--{boundary}\r\nContent-Type: application/xop+xml; charset=UTF-8; "
              f'type="text/xml"\r\nContent-ID: <root@test>\r\n\r\n{root}').encode()]
    for cid, data in (("dwg@test", dwg), ("drawing@test", drawing)):
        parts.append((f"\r\n--{boundary}\r\nContent-Type: application/octet-stream\r\n"
                      f"Content-Transfer-Encoding: binary\r\nContent-ID: <{cid}>\r\n\r\n").encode()
                     + data)
    parts.append(f"\r\n--{boundary}--\r\n".encode())
    content_type = (f'multipart/related; type="application/xop+xml"; boundary="{boundary}"; '
                    'start="<root@test>"; start-info="text/xml"')
    return b"".join(parts), content_type


def fault_detail(fault):
    """(exception element name, its message) of a zeep Fault's detail."""
    assert fault.detail is not None and len(fault.detail), "the fault has no detail"
    exception = fault.detail[0]
    return exception.tag, exception.findtext("message")


def expect_fault(call, exception):
    try:
        call()
    except zeep.exceptions.Fault as fault:
        tag, message = fault_detail(fault)
        assert tag == f"{{{NS}}}{exception}", f"detail {tag}, not {exception}"
        assert message == fault.message, (message, fault.message)
        return message
    raise AssertionError(f"no {exception} fault")


def pattern(size):
    """Bytes that are neither blank nor line breaks at either end (zeep strips
    CR and LF from both ends of an MTOM attachment it reads)."""
    data = bytearray(os.urandom(size))
    data[0], data[-1] = ord("<"), ord(">")
    return bytes(data)


# ---- the checks ---------------------------------------------------------------

def check_operations_through_the_service_description():
    with Server(fresh_db("operations.db"), "--seed-demo") as server:
        api = service(server)
        [building] = api.getBuildingsAndFloors()
        assert building.name == "Demo Building" and building.address.city, building
        level1, level2 = building.floors.floor
        assert (level1.name, level2.name) == ("Level 1", "Level 2")
        assert level1.drawing.dwgAvailable and not level1.drawing.drawingAvailable
        assert level1.drawing.binaryFormat == "dxf" and level2.drawing is None

        # The seeded DWG is the sample floor (byte for byte through floorxport, in tests/exchange).
        assert api.getDWG(floorId=level1.id) == sample.read_bytes().strip(b"\r\n")

        name = "Étage 3 — Süd"
        floor = api.createFloor(buildingId=building.id, floorName=name)
        dwg, drawing = pattern(3 * MIB), pattern(100_000)
        assert api.setDrawing(floorId=floor, dwgFile=dwg, drawingFile=drawing,
                              drawingNotes="Révision ①", binaryFormat="dwg") is None
        assert api.getDWG(floorId=floor) == dwg
        assert api.getDrawing(floorId=floor) == drawing
        [building] = api.getBuildingsAndFloors()
        [new] = [f for f in building.floors.floor if f.id == floor]
        assert new.name == name and new.drawing.notes == "Révision ①"
        assert new.drawing.dwgAvailable and new.drawing.drawingAvailable
        assert new.drawing.binaryFormat == "dwg" and new.drawing.id == floor

        assert expect_fault(lambda: api.createFloor(buildingId=99, floorName="x"),
                            "ApplicationException") == "Building 99 not found"
        assert expect_fault(lambda: api.getDWG(floorId=4242),
                            "DrawingNotFoundException") == "Floor 4242 not found"
        expect_fault(lambda: api.setDrawing(floorId=4242, dwgFile=b"x", drawingFile=b""),
                     "DrawingNotFoundException")
        # Level 1's drawing has an empty ".drawing" part; a new floor has none at all.
        expect_fault(lambda: api.getDrawing(floorId=level1.id), "DrawingNotFoundException")
        empty = api.createFloor(buildingId=building.id, floorName="Empty")
        expect_fault(lambda: api.getDWG(floorId=empty), "DrawingNotFoundException")
        assert server.stop() == 0


def check_basic_authentication():
    users = temp_dir / "users"
    users.unlink(missing_ok=True)
    for name, password in (("alice", "correct horse"), ("bob", "battery staple")):
        run = subprocess.run([str(binary), "adduser", "--users", str(users), name],
                             input=password + "\n", capture_output=True, text=True)
        assert run.returncode == 0, run.stderr
    # That no password is kept in the file is checked end to end in tests/exchange.
    assert [line.split(":")[0] for line in users.read_text().splitlines()] == ["alice", "bob"]
    assert users.stat().st_mode & 0o077 == 0, "the users file is readable by others"

    with Server(fresh_db("auth.db"), "--seed-demo", "--users", str(users)) as server:
        request = envelope("getBuildingsAndFloors", "")
        for auth in (None, HTTPBasicAuth("alice", "wrong"), HTTPBasicAuth("mallory", "correct horse")):
            response = http.post(server.url + SOAP_PATH, data=request, auth=auth,
                                     headers={"Content-Type": "text/xml"})
            assert response.status_code == 401, (auth, response.status_code)
            assert "Basic realm=" in response.headers.get("WWW-Authenticate", "")
        try:
            service(server).getBuildingsAndFloors()
            raise AssertionError("a call without credentials was answered")
        except (zeep.exceptions.Fault, zeep.exceptions.TransportError):
            pass
        api = service(server, HTTPBasicAuth("alice", "correct horse"))
        assert api.getBuildingsAndFloors()[0].name == "Demo Building"
        assert api.getBuildingsAndFloors()[0].name == "Demo Building"  # the remembered password
        assert service(server, HTTPBasicAuth("bob", "battery staple")).getDWG(floorId=1)

        rooms = server.url + ROOMS_PATH + "?floorId=1"
        assert http.get(rooms).status_code == 401
        assert http.get(rooms, headers={"x-auth-username": "alice",
                                            "x-auth-password": "nope"}).status_code == 401
        response = http.get(rooms, headers={"x-auth-username": "bob",
                                                "x-auth-password": "battery staple"})
        assert response.status_code == 200 and len(response.json()) == 6
        assert server.stop() == 0


def check_rest_rooms():
    db = fresh_db("rest.db")
    with Server(db, "--seed-demo") as server:
        url = server.url + ROOMS_PATH
        response = http.get(url, params={"floorId": 1, "limit": 2000,
                                             "selector": "users(jobTitle),type,costCenter"})
        assert response.status_code == 200
        assert response.headers["Content-Type"].startswith("application/json")
        rooms = response.json()
        assert [room["name"] for room in rooms] == ["1.01", "1.02", "1.03", "1.04", "1.05", "1.12"]
        assert rooms[0] == {"name": "1.01", "type": "Office", "costCenter": "CC-1100", "users": [
            {"name": "Robin Example", "jobTitle": "Facility Manager"},
            {"name": "Sam Sample", "jobTitle": "Space Planner"}]}
        assert rooms[3]["users"][1]["jobTitle"] == "Développeuse"
        only_types = http.get(url, params={"floorId": 1, "selector": "type", "limit": 2}).json()
        assert only_types == [{"name": "1.01", "type": "Office"}, {"name": "1.02", "type": "Office"}]
        assert http.get(url, params={"floorId": 99}).status_code == 404
        assert http.get(url).status_code == 400
        assert http.get(server.url + "elsewhere").status_code == 404

        # Rooms imported from JSON come back as they went in, whatever the text holds.
        tricky = [{"name": 'Q"uote\\back\nslash\t\u0001', "type": "Büro 😀", "costCenter": "</x>",
                   "users": [{"name": "Zoë", "jobTitle": "Head of \"Things\""}]},
                  {"name": "plain", "type": "", "costCenter": "", "users": []}]
        source = temp_dir / "rooms.json"
        source.write_text(json.dumps(tricky), encoding="utf-8")
        run = subprocess.run([str(binary), "rooms", "--db", str(db), "--floor", "2",
                              "--json", str(source)], capture_output=True, text=True)
        assert run.returncode == 0, run.stderr
        assert http.get(url, params={"floorId": 2}).json() == tricky
        run = subprocess.run([str(binary), "rooms", "--db", str(db), "--floor", "77",
                              "--json", str(source)], capture_output=True, text=True)
        assert run.returncode != 0 and "floor 77" in run.stderr
        assert server.stop() == 0


def check_kill_9_at_any_moment_of_an_upload():
    """Kills spread from the first bytes of an upload to after its answer
    (reading, storing, committing): each restart, with --seed-demo (which
    must not seed again), finds the database intact and the floor holding
    the drawing committed before or the new one, whole."""
    db = fresh_db("kill-any.db")
    held, kills = pattern(MIB), 6
    with Server(db, "--seed-demo") as server:
        service(server).setDrawing(floorId=2, dwgFile=held, drawingFile=b"", drawingNotes="0")
        started = time.monotonic()
        body, content_type = mtom_upload(2, pattern(8 * MIB))
        answer = http.post(server.url + SOAP_PATH, data=body, headers={"Content-Type": content_type})
        assert answer.status_code == 200
        upload_seconds = time.monotonic() - started
        service(server).setDrawing(floorId=2, dwgFile=held, drawingFile=b"", drawingNotes="0")
    outcomes = {"before": 0, "new": 0}
    for kill in range(1, kills + 1):
        new = pattern(8 * MIB)
        body, content_type = mtom_upload(2, new)
        with Server(db, "--seed-demo") as server:
            def upload():
                try:
                    with socket.create_connection(("127.0.0.1", server.port)) as connection:
                        connection.sendall((f"POST /{SOAP_PATH} HTTP/1.1\r\nHost: localhost\r\n"
                                            f"Content-Type: {content_type}\r\n"
                                            f"Content-Length: {len(body)}\r\n\r\n").encode() + body)
                        connection.recv(1024)
                except OSError:
                    pass
            sender = threading.Thread(target=upload)
            sender.start()
            time.sleep(upload_seconds * kill / (kills - 1))  # the last one after the answer
            server.process.kill()
            assert server.process.wait(timeout=30) == -signal.SIGKILL
            sender.join()
        with sqlite3.connect(db) as database:
            assert database.execute("PRAGMA integrity_check").fetchone() == ("ok",)
        with Server(db, "--seed-demo") as server:
            api = service(server)
            stored = api.getDWG(floorId=2)
            assert stored in (held, new), f"kill {kill}: the floor holds {len(stored)} other bytes"
            outcomes["new" if stored == new else "before"] += 1
            held = stored
            [building] = api.getBuildingsAndFloors()
            assert len(building.floors.floor) == 2, "--seed-demo seeded a database twice"
            assert server.stop() == 0
    print(f"     {kills} kills: {outcomes['before']} found the drawing before, {outcomes['new']} the new one")


def check_request_size_limit():
    with Server(fresh_db("limit.db"), "--seed-demo", "--max-request-mb", "1") as server:
        api = service(server)
        try:
            api.setDrawing(floorId=2, dwgFile=pattern(2 * MIB), drawingFile=b"")
            raise AssertionError("a request over the limit was accepted")
        except zeep.exceptions.Fault as fault:
            assert "too large" in fault.message and "1 MB" in fault.message, fault.message
        body, content_type = mtom_upload(2, pattern(3 * MIB))
        response = http.post(server.url + SOAP_PATH, data=body,
                                 headers={"Content-Type": content_type})
        assert response.status_code == 413 and "too large" in response.text
        # Without a Content-Length (chunked), the request is cut off where it passes the limit.
        chunks = (body[i:i + 65536] for i in range(0, len(body), 65536))
        response = http.post(server.url + SOAP_PATH, data=chunks,
                                 headers={"Content-Type": content_type})
        assert response.status_code == 413 and "too large" in response.text
        small = pattern(100_000)
        api.setDrawing(floorId=2, dwgFile=small, drawingFile=b"")
        assert api.getDWG(floorId=2) == small
        assert server.stop() == 0


def check_stalled_client_and_sigterm_with_a_request_in_flight():
    with Server(fresh_db("stop.db"), "--seed-demo", "--timeout", "20") as server:
        # A client that connects and says nothing holds only its own connection.
        idle = socket.create_connection(("127.0.0.1", server.port))
        idle.sendall(b"POST /")
        api = service(server)
        assert api.getBuildingsAndFloors()[0].name == "Demo Building"

        data = pattern(3 * MIB)
        body, content_type = mtom_upload(2, data)
        upload = socket.create_connection(("127.0.0.1", server.port))
        upload.sendall((f"POST /{SOAP_PATH} HTTP/1.1\r\nHost: localhost\r\n"
                        f"Content-Type: {content_type}\r\nContent-Length: {len(body)}\r\n\r\n"
                        ).encode() + body[:MIB])
        idle.close()
        time.sleep(0.3)
        server.process.send_signal(signal.SIGTERM)
        time.sleep(0.3)
        upload.sendall(body[MIB:])  # the request in flight is finished
        upload.settimeout(30)
        reply = b""
        while chunk := upload.recv(65536):
            reply += chunk
        assert reply.startswith(b"HTTP/1.1 200"), reply[:200]
        assert server.process.wait(timeout=60) == 0
    with Server(temp_dir / "stop.db") as server:
        assert service(server).getDWG(floorId=2) == data
        assert server.stop(signal.SIGINT) == 0


CHECKS = [
    check_operations_through_the_service_description,
    check_basic_authentication,
    check_rest_rooms,
    check_kill_9_at_any_moment_of_an_upload,
    check_request_size_limit,
    check_stalled_client_and_sigterm_with_a_request_in_flight,
]


def main():
    passed = failed = 0
    for check in CHECKS:
        name = check.__name__.removeprefix("check_").replace("_", " ")
        try:
            check()
            passed += 1
            print(f"PASS {name}", flush=True)
        except Exception:  # noqa: BLE001 - every failure is reported the same way
            failed += 1
            print(f"FAIL {name}\n{traceback.format_exc()}", flush=True)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
