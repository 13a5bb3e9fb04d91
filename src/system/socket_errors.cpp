#include "system/socket_errors.h"

namespace brindle::system {

namespace {

struct Named {
    int32_t code;
    const char *name;
};

const Named kNames[] = {
    {10004, "WSAEINTR"},           {10009, "WSAEBADF"},           {10013, "WSAEACCES"},
    {10014, "WSAEFAULT"},          {10022, "WSAEINVAL"},          {10024, "WSAEMFILE"},
    {10035, "WSAEWOULDBLOCK"},     {10036, "WSAEINPROGRESS"},     {10037, "WSAEALREADY"},
    {10038, "WSAENOTSOCK"},        {10039, "WSAEDESTADDRREQ"},    {10040, "WSAEMSGSIZE"},
    {10041, "WSAEPROTOTYPE"},      {10042, "WSAENOPROTOOPT"},     {10043, "WSAEPROTONOSUPPORT"},
    {10044, "WSAESOCKTNOSUPPORT"}, {10045, "WSAEOPNOTSUPP"},      {10046, "WSAEPFNOSUPPORT"},
    {10047, "WSAEAFNOSUPPORT"},    {10048, "WSAEADDRINUSE"},      {10049, "WSAEADDRNOTAVAIL"},
    {10050, "WSAENETDOWN"},        {10051, "WSAENETUNREACH"},     {10052, "WSAENETRESET"},
    {10053, "WSAECONNABORTED"},    {10054, "WSAECONNRESET"},      {10055, "WSAENOBUFS"},
    {10056, "WSAEISCONN"},         {10057, "WSAENOTCONN"},        {10058, "WSAESHUTDOWN"},
    {10059, "WSAETOOMANYREFS"},    {10060, "WSAETIMEDOUT"},       {10061, "WSAECONNREFUSED"},
    {10062, "WSAELOOP"},           {10063, "WSAENAMETOOLONG"},    {10064, "WSAEHOSTDOWN"},
    {10065, "WSAEHOSTUNREACH"},    {10066, "WSAENOTEMPTY"},       {10067, "WSAEPROCLIM"},
    {10068, "WSAEUSERS"},          {10069, "WSAEDQUOT"},          {10070, "WSAESTALE"},
    {10071, "WSAEREMOTE"},         {10091, "WSASYSNOTREADY"},     {10092, "WSAVERNOTSUPPORTED"},
    {10093, "WSANOTINITIALISED"},  {10101, "WSAEDISCON"},
};

} // namespace

std::string_view socket_error_name(int32_t code) noexcept {
    for (const Named &n : kNames)
        if (n.code == code)
            return n.name;
    return "No error";
}

int socket_errno_of(int32_t code) noexcept {
    switch (code) {
    case 10035: // would block
    case 10036: // in progress
        return 11;
    case 10053: // aborted
    case 10054: // reset
        return 10054;
    default:
        return code;
    }
}

} // namespace brindle::system
