#include "telemetry/mosquittolibrary.h"

#include <QLibrary>

#include <mutex>

namespace telemetry {

namespace {

template <typename Function>
bool find(QLibrary& library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(library.resolve(name));
    return *function;
}

bool loadInto(MosquittoLibrary* functions) {
    QLibrary library{QLatin1String(MosquittoLibrary::fileName)};
    return library.load() && find(library, "mosquitto_lib_init", &functions->init) &&
           find(library, "mosquitto_lib_cleanup", &functions->cleanup) &&
           find(library, "mosquitto_new", &functions->create) &&
           find(library, "mosquitto_destroy", &functions->destroy) &&
           find(library, "mosquitto_connect_callback_set", &functions->connect_callback_set) &&
           find(library, "mosquitto_publish_callback_set", &functions->publish_callback_set) &&
           find(library, "mosquitto_log_callback_set", &functions->log_callback_set) &&
           find(library, "mosquitto_will_set", &functions->will_set) &&
           find(library, "mosquitto_username_pw_set", &functions->username_pw_set) &&
           find(library, "mosquitto_int_option", &functions->int_option) &&
           find(library, "mosquitto_tls_set", &functions->tls_set) &&
           find(library, "mosquitto_connect_async", &functions->connect_async) &&
           find(library, "mosquitto_disconnect", &functions->disconnect) &&
           find(library, "mosquitto_socket", &functions->socket) &&
           find(library, "mosquitto_want_write", &functions->want_write) &&
           find(library, "mosquitto_loop", &functions->loop) &&
           find(library, "mosquitto_publish", &functions->publish) &&
           find(library, "mosquitto_strerror", &functions->strerror) &&
           find(library, "mosquitto_connack_string", &functions->connack_string);
}

}  // namespace

const MosquittoLibrary* MosquittoLibrary::load() {
    static std::mutex mutex;
    static MosquittoLibrary loaded;
    static bool isLoaded = false;
    const std::lock_guard<std::mutex> lock(mutex);
    isLoaded = isLoaded || loadInto(&loaded);
    return isLoaded ? &loaded : nullptr;
}

}  // namespace telemetry
