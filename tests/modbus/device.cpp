// modbus_device PORT [MS]: the device of device.py on libmodbus. With MS it switches all its outputs off, and
// says "watchdog" and after how many ms, when register 31 was not written for that long.

#include <modbus/modbus.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int size = 32;
constexpr int beatRegister = 31;
constexpr int headerSize = 7;

using Clock = std::chrono::steady_clock;

class Device {
public:
    explicit Device(int watchdogMs)
        : map_(modbus_mapping_new(size, size, size, size)), watchdogMs_(watchdogMs) {}
    ~Device() { modbus_mapping_free(map_); }

    modbus_mapping_t* map() { return map_; }

    /// Tells a write that was carried out.
    void tell(const uint8_t* request) {
        const uint8_t* const pdu = request + headerSize;
        const int function = pdu[0];
        const int address = pdu[1] * 256 + pdu[2];
        const bool isOne =
            function == MODBUS_FC_WRITE_SINGLE_COIL || function == MODBUS_FC_WRITE_SINGLE_REGISTER;
        const int count = isOne ? 1 : pdu[3] * 256 + pdu[4];
        const bool isCoil =
            function == MODBUS_FC_WRITE_SINGLE_COIL || function == MODBUS_FC_WRITE_MULTIPLE_COILS;
        if (!isCoil && function != MODBUS_FC_WRITE_SINGLE_REGISTER &&
            function != MODBUS_FC_WRITE_MULTIPLE_REGISTERS) {
            return;
        }
        if (address + count > size) {
            return;
        }
        std::printf(isCoil ? "coil %d" : "register %d", address);
        for (int i = address; i < address + count; ++i) {
            std::printf(" %d", isCoil ? int(map_->tab_bits[i]) : int(int16_t(map_->tab_registers[i])));
        }
        std::printf("\n");
        if (!isCoil && address <= beatRegister && beatRegister < address + count) {
            beat_ = Clock::now();
            isArmed_ = watchdogMs_ > 0;
        }
        wire();
    }

    void watch() {
        const auto silent =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - beat_).count();
        if (isArmed_ && silent >= watchdogMs_) {
            std::fill_n(map_->tab_bits, size, uint8_t(0));
            std::fill_n(map_->tab_registers, size, uint16_t(0));
            wire();
            std::printf("watchdog %d\n", int(silent));
            isArmed_ = false;
        }
    }

private:
    void wire() {
        std::copy_n(map_->tab_bits, size, map_->tab_input_bits);
        std::copy_n(map_->tab_registers, size, map_->tab_input_registers);
    }

    modbus_mapping_t* map_;
    int watchdogMs_;
    bool isArmed_ = false;
    Clock::time_point beat_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return 2;
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    Device device(argc > 2 ? std::atoi(argv[2]) : 0);
    modbus_t* const bus = modbus_new_tcp("127.0.0.1", std::atoi(argv[1]));
    int listener = modbus_tcp_listen(bus, 8);
    if (listener < 0) {
        std::perror("listen");
        return 1;
    }
    modbus_set_indication_timeout(bus, 0, 5000);  // between two looks at the watchdog
    uint8_t request[MODBUS_TCP_MAX_ADU_LENGTH];
    for (;;) {
        fd_set ready;
        FD_ZERO(&ready);
        FD_SET(listener, &ready);
        timeval limit{0, 5000};
        device.watch();
        if (select(listener + 1, &ready, nullptr, nullptr, &limit) < 1 ||
            modbus_tcp_accept(bus, &listener) < 0) {
            continue;
        }
        for (int got = 0; got >= 0 || errno == ETIMEDOUT;) {
            got = modbus_receive(bus, request);
            if (got > 0) {
                modbus_reply(bus, request, got, device.map());
                device.tell(request);
            }
            device.watch();
        }
        modbus_close(bus);
    }
}
