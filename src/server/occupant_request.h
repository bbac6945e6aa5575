// The request for a floor's occupant data, with the log-in: the remembered
// credentials travel in the request's headers; without any the log-in
// dialog asks first, and it asks again when the server answers HTTP 401.
#ifndef FLOORXPORT_SERVER_OCCUPANT_REQUEST_H_
#define FLOORXPORT_SERVER_OCCUPANT_REQUEST_H_

#include <string>

namespace fx::server {

// GETs the rooms of floor `floor_id` from `server` ("scheme://host[:port]/").
// kSucceeded with the answer's text in `body`; kCanceled when the user
// cancelled the log-in, or kFailed, with the reason in `error` (for a
// failure the transfer's error, or the HTTP status with the error text of
// the server's answer).
int RequestOccupantRooms(const std::string& server, int floor_id, std::string& body,
                         std::string& error);

}  // namespace fx::server

#endif  // FLOORXPORT_SERVER_OCCUPANT_REQUEST_H_
