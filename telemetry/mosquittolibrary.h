#pragma once

#include <mosquitto.h>

namespace telemetry {

/// The functions of libmosquitto that a connection calls. The library is loaded when telemetry is switched
/// on, not with the program: it brings OpenSSL, and most cells have no broker.
struct MosquittoLibrary {
    static constexpr const char* fileName = "libmosquitto.so.1";

    /// Null where the library is missing or not the one of mosquitto.h; asked again it tries again. It stays
    /// loaded. Any thread may call it.
    static const MosquittoLibrary* load();

    decltype(&::mosquitto_lib_init) init = nullptr;
    decltype(&::mosquitto_lib_cleanup) cleanup = nullptr;
    decltype(&::mosquitto_new) create = nullptr;
    decltype(&::mosquitto_destroy) destroy = nullptr;
    decltype(&::mosquitto_connect_callback_set) connect_callback_set = nullptr;
    decltype(&::mosquitto_publish_callback_set) publish_callback_set = nullptr;
    decltype(&::mosquitto_log_callback_set) log_callback_set = nullptr;
    decltype(&::mosquitto_will_set) will_set = nullptr;
    decltype(&::mosquitto_username_pw_set) username_pw_set = nullptr;
    decltype(&::mosquitto_int_option) int_option = nullptr;
    decltype(&::mosquitto_tls_set) tls_set = nullptr;
    decltype(&::mosquitto_connect_async) connect_async = nullptr;
    decltype(&::mosquitto_disconnect) disconnect = nullptr;
    decltype(&::mosquitto_socket) socket = nullptr;
    decltype(&::mosquitto_want_write) want_write = nullptr;
    decltype(&::mosquitto_loop) loop = nullptr;
    decltype(&::mosquitto_publish) publish = nullptr;
    decltype(&::mosquitto_strerror) strerror = nullptr;
    decltype(&::mosquitto_connack_string) connack_string = nullptr;
};

}  // namespace telemetry
