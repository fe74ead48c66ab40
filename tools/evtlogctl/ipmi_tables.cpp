// The IPMI 2.0 tables of sensor types and of sensor-specific events.
//
// The severity of an event is this program's judgement; IPMI has none. Critical: the machine has
// lost data or work, or cannot go on. Major: a part has failed or redundancy is gone. Minor: a
// fault that was corrected or is foretold, a limit or a protection that someone should look at.
#include "tools/evtlogctl/ipmi_tables.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace zusahpi::sel {
namespace {

constexpr SaHpiSeverityT critical = SAHPI_CRITICAL;
constexpr SaHpiSeverityT major = SAHPI_MAJOR;
constexpr SaHpiSeverityT minor = SAHPI_MINOR;
constexpr SaHpiSeverityT info = SAHPI_INFORMATIONAL;

constexpr auto events = std::to_array<SpecificEvent>({
    // Physical security
    {0x05, 0x0, minor, "general chassis intrusion"},
    {0x05, 0x1, minor, "drive bay intrusion"},
    {0x05, 0x2, minor, "I/O card area intrusion"},
    {0x05, 0x3, minor, "processor area intrusion"},
    {0x05, 0x4, minor, "LAN leash lost"},
    {0x05, 0x5, minor, "unauthorized dock"},
    {0x05, 0x6, minor, "fan area intrusion"},
    // Platform security violation attempt
    {0x06, 0x0, minor, "secure mode violation attempt"},
    {0x06, 0x1, minor, "pre-boot user password violation"},
    {0x06, 0x2, minor, "pre-boot setup password violation"},
    {0x06, 0x3, minor, "pre-boot network boot password violation"},
    {0x06, 0x4, minor, "other pre-boot password violation"},
    {0x06, 0x5, minor, "out-of-band access password violation"},
    // Processor
    {0x07, 0x0, critical, "IERR"},
    {0x07, 0x1, critical, "thermal trip"},
    {0x07, 0x2, critical, "FRB1/BIST failure"},
    {0x07, 0x3, critical, "FRB2/hang in POST failure"},
    {0x07, 0x4, critical, "FRB3/processor startup failure"},
    {0x07, 0x5, major, "configuration error"},
    {0x07, 0x6, critical, "uncorrectable CPU-complex error"},
    {0x07, 0x7, info, "presence detected"},
    {0x07, 0x8, minor, "disabled"},
    {0x07, 0x9, info, "terminator presence detected"},
    {0x07, 0xA, minor, "throttled"},
    {0x07, 0xB, critical, "uncorrectable machine check exception"},
    {0x07, 0xC, minor, "correctable machine check error"},
    // Power supply
    {0x08, 0x0, info, "presence detected"},
    {0x08, 0x1, critical, "failure detected"},
    {0x08, 0x2, minor, "predictive failure"},
    {0x08, 0x3, major, "input lost"},
    {0x08, 0x4, major, "input lost or out of range"},
    {0x08, 0x5, minor, "input out of range, but present"},
    {0x08, 0x6, minor, "configuration error"},
    {0x08, 0x7, info, "inactive"},
    // Power unit
    {0x09, 0x0, info, "power off"},
    {0x09, 0x1, info, "power cycle"},
    {0x09, 0x2, critical, "240VA power down"},
    {0x09, 0x3, minor, "interlock power down"},
    {0x09, 0x4, major, "AC lost"},
    {0x09, 0x5, major, "soft power control failure"},
    {0x09, 0x6, critical, "failure detected"},
    {0x09, 0x7, minor, "predictive failure"},
    // Memory
    {0x0C, 0x0, minor, "correctable ECC error"},
    {0x0C, 0x1, critical, "uncorrectable ECC error"},
    {0x0C, 0x2, critical, "parity error"},
    {0x0C, 0x3, major, "scrub failed (stuck bit)"},
    {0x0C, 0x4, major, "device disabled"},
    {0x0C, 0x5, major, "correctable ECC error logging limit reached"},
    {0x0C, 0x6, info, "presence detected"},
    {0x0C, 0x7, major, "configuration error"},
    {0x0C, 0x8, info, "spare"},
    {0x0C, 0x9, minor, "throttled"},
    {0x0C, 0xA, critical, "critical overtemperature"},
    // Drive slot
    {0x0D, 0x0, info, "drive present"},
    {0x0D, 0x1, major, "drive fault"},
    {0x0D, 0x2, minor, "predictive failure"},
    {0x0D, 0x3, info, "hot spare"},
    {0x0D, 0x4, info, "consistency check in progress"},
    {0x0D, 0x5, major, "in critical array"},
    {0x0D, 0x6, critical, "in failed array"},
    {0x0D, 0x7, info, "rebuild in progress"},
    {0x0D, 0x8, minor, "rebuild aborted"},
    // System firmware progress
    {0x0F, 0x0, major, "firmware error"},
    {0x0F, 0x1, critical, "firmware hang"},
    {0x0F, 0x2, info, "firmware progress"},
    // Event logging disabled
    {0x10, 0x0, minor, "correctable memory error logging disabled"},
    {0x10, 0x1, minor, "event type logging disabled"},
    {0x10, 0x2, info, "log area cleared"},
    {0x10, 0x3, minor, "all event logging disabled"},
    {0x10, 0x4, minor, "log full"},
    {0x10, 0x5, minor, "log almost full"},
    {0x10, 0x6, minor, "correctable machine check error logging disabled"},
    // Watchdog 1
    {0x11, 0x0, major, "BIOS watchdog reset"},
    {0x11, 0x1, major, "OS watchdog reset"},
    {0x11, 0x2, major, "OS watchdog shutdown"},
    {0x11, 0x3, major, "OS watchdog power down"},
    {0x11, 0x4, major, "OS watchdog power cycle"},
    {0x11, 0x5, minor, "OS watchdog NMI"},
    {0x11, 0x6, minor, "OS watchdog expired, status only"},
    {0x11, 0x7, minor, "OS watchdog pre-timeout interrupt"},
    // System event
    {0x12, 0x0, info, "system reconfigured"},
    {0x12, 0x1, info, "OEM system boot event"},
    {0x12, 0x2, critical, "undetermined system hardware failure"},
    {0x12, 0x3, info, "entry added to auxiliary log"},
    {0x12, 0x4, info, "PEF action"},
    {0x12, 0x5, info, "timestamp clock sync"},
    // Critical interrupt
    {0x13, 0x0, critical, "front panel NMI"},
    {0x13, 0x1, critical, "bus timeout"},
    {0x13, 0x2, critical, "I/O channel check NMI"},
    {0x13, 0x3, critical, "software NMI"},
    {0x13, 0x4, critical, "PCI PERR"},
    {0x13, 0x5, critical, "PCI SERR"},
    {0x13, 0x6, critical, "EISA fail safe timeout"},
    {0x13, 0x7, minor, "bus correctable error"},
    {0x13, 0x8, critical, "bus uncorrectable error"},
    {0x13, 0x9, critical, "fatal NMI"},
    {0x13, 0xA, critical, "bus fatal error"},
    {0x13, 0xB, major, "bus degraded"},
    // Button or switch
    {0x14, 0x0, info, "power button pressed"},
    {0x14, 0x1, info, "sleep button pressed"},
    {0x14, 0x2, info, "reset button pressed"},
    {0x14, 0x3, info, "FRU latch open"},
    {0x14, 0x4, info, "FRU service request"},
    // Chip set
    {0x19, 0x0, major, "soft power control failure"},
    {0x19, 0x1, critical, "thermal trip"},
    // Cable or interconnect
    {0x1B, 0x0, info, "connected"},
    {0x1B, 0x1, minor, "configuration error"},
    // System boot initiated
    {0x1D, 0x0, info, "initiated by power up"},
    {0x1D, 0x1, info, "initiated by hard reset"},
    {0x1D, 0x2, info, "initiated by warm reset"},
    {0x1D, 0x3, info, "user requested PXE boot"},
    {0x1D, 0x4, info, "automatic boot to diagnostic"},
    {0x1D, 0x5, info, "software initiated hard reset"},
    {0x1D, 0x6, info, "software initiated warm reset"},
    {0x1D, 0x7, info, "system restart"},
    // Boot error
    {0x1E, 0x0, major, "no bootable media"},
    {0x1E, 0x1, minor, "non-bootable diskette left in drive"},
    {0x1E, 0x2, minor, "PXE server not found"},
    {0x1E, 0x3, major, "invalid boot sector"},
    {0x1E, 0x4, info, "timeout waiting for selection of boot source"},
    // Operating system boot
    {0x1F, 0x0, info, "A: boot completed"},
    {0x1F, 0x1, info, "C: boot completed"},
    {0x1F, 0x2, info, "PXE boot completed"},
    {0x1F, 0x3, info, "diagnostic boot completed"},
    {0x1F, 0x4, info, "CD-ROM boot completed"},
    {0x1F, 0x5, info, "ROM boot completed"},
    {0x1F, 0x6, info, "boot completed, device not specified"},
    {0x1F, 0x7, info, "installation started"},
    {0x1F, 0x8, info, "installation completed"},
    {0x1F, 0x9, minor, "installation aborted"},
    {0x1F, 0xA, minor, "installation failed"},
    // Operating system stop or shutdown
    {0x20, 0x0, critical, "stop during OS load"},
    {0x20, 0x1, critical, "run-time critical stop"},
    {0x20, 0x2, info, "OS graceful stop"},
    {0x20, 0x3, info, "OS graceful shutdown"},
    {0x20, 0x4, info, "soft shutdown initiated by PEF"},
    {0x20, 0x5, minor, "agent not responding"},
    // Slot or connector
    {0x21, 0x0, major, "fault"},
    {0x21, 0x1, info, "identify"},
    {0x21, 0x2, info, "device installed"},
    {0x21, 0x3, info, "ready for device installation"},
    {0x21, 0x4, info, "ready for device removal"},
    {0x21, 0x5, info, "power off"},
    {0x21, 0x6, info, "device removal request"},
    {0x21, 0x7, info, "interlock"},
    {0x21, 0x8, minor, "disabled"},
    {0x21, 0x9, info, "holds spare device"},
    // System ACPI power state
    {0x22, 0x0, info, "S0/G0 working"},
    {0x22, 0x1, info, "S1 sleeping, context kept"},
    {0x22, 0x2, info, "S2 sleeping, context lost"},
    {0x22, 0x3, info, "S3 sleeping, memory kept"},
    {0x22, 0x4, info, "S4 suspended to disk"},
    {0x22, 0x5, info, "S5/G2 soft off"},
    {0x22, 0x6, info, "S4/S5 soft off"},
    {0x22, 0x7, info, "G3 mechanical off"},
    {0x22, 0x8, info, "sleeping in S1, S2 or S3"},
    {0x22, 0x9, info, "G1 sleeping"},
    {0x22, 0xA, info, "S5 entered by override"},
    {0x22, 0xB, info, "legacy on"},
    {0x22, 0xC, info, "legacy off"},
    {0x22, 0xE, info, "unknown"},
    // Watchdog 2
    {0x23, 0x0, minor, "timer expired, status only"},
    {0x23, 0x1, major, "hard reset"},
    {0x23, 0x2, major, "power down"},
    {0x23, 0x3, major, "power cycle"},
    {0x23, 0x8, minor, "timer interrupt"},
    // Platform alert
    {0x24, 0x0, info, "platform generated page"},
    {0x24, 0x1, info, "platform generated LAN alert"},
    {0x24, 0x2, info, "platform event trap generated"},
    {0x24, 0x3, info, "platform generated SNMP trap"},
    // Entity presence
    {0x25, 0x0, info, "present"},
    {0x25, 0x1, info, "absent"},
    {0x25, 0x2, info, "disabled"},
    // LAN
    {0x27, 0x0, major, "heartbeat lost"},
    {0x27, 0x1, info, "heartbeat"},
    // Management subsystem health
    {0x28, 0x0, minor, "sensor access degraded or unavailable"},
    {0x28, 0x1, minor, "controller access degraded or unavailable"},
    {0x28, 0x2, major, "controller off-line"},
    {0x28, 0x3, major, "controller unavailable"},
    {0x28, 0x4, minor, "sensor failure"},
    {0x28, 0x5, major, "FRU failure"},
    // Battery
    {0x29, 0x0, minor, "low"},
    {0x29, 0x1, major, "failed"},
    {0x29, 0x2, info, "presence detected"},
    // Session audit
    {0x2A, 0x0, info, "session activated"},
    {0x2A, 0x1, info, "session deactivated"},
    {0x2A, 0x2, info, "invalid username or password"},
    {0x2A, 0x3, info, "account disabled after invalid passwords"},
    // Version change
    {0x2B, 0x0, info, "hardware change detected"},
    {0x2B, 0x1, info, "firmware or software change detected"},
    {0x2B, 0x2, info, "hardware incompatibility detected"},
    {0x2B, 0x3, info, "firmware or software incompatibility detected"},
    {0x2B, 0x4, info, "invalid or unsupported hardware version"},
    {0x2B, 0x5, info, "invalid or unsupported firmware version"},
    {0x2B, 0x6, info, "hardware change successful"},
    {0x2B, 0x7, info, "firmware or software change successful"},
    // FRU state
    {0x2C, 0x0, info, "not installed"},
    {0x2C, 0x1, info, "inactive"},
    {0x2C, 0x2, info, "activation requested"},
    {0x2C, 0x3, info, "activation in progress"},
    {0x2C, 0x4, info, "active"},
    {0x2C, 0x5, info, "deactivation requested"},
    {0x2C, 0x6, info, "deactivation in progress"},
    {0x2C, 0x7, info, "communication lost"},
});

[[nodiscard]] constexpr bool before(const SpecificEvent &a, const SpecificEvent &b) {
    return a.sensorType != b.sensorType ? a.sensorType < b.sensorType : a.offset < b.offset;
}

[[nodiscard]] constexpr bool strictlyOrdered() {
    for (std::size_t i = 1; i < events.size(); ++i) {
        if (!before(events[i - 1], events[i])) {
            return false;
        }
    }
    return true;
}
static_assert(strictlyOrdered(), "an event stands in the table once");

// The index is the sensor type.
constexpr auto sensorTypeNames = std::to_array<std::string_view>({
    "",
    "Temperature",
    "Voltage",
    "Current",
    "Fan",
    "Physical Security",
    "Platform Security",
    "Processor",
    "Power Supply",
    "Power Unit",
    "Cooling Device",
    "Other Units-based Sensor",
    "Memory",
    "Drive Slot",
    "POST Memory Resize",
    "System Firmware Progress",
    "Event Logging Disabled",
    "Watchdog 1",
    "System Event",
    "Critical Interrupt",
    "Button",
    "Module/Board",
    "Microcontroller/Coprocessor",
    "Add-in Card",
    "Chassis",
    "Chip Set",
    "Other FRU",
    "Cable/Interconnect",
    "Terminator",
    "System Boot Initiated",
    "Boot Error",
    "OS Boot",
    "OS Critical Stop",
    "Slot/Connector",
    "System ACPI Power State",
    "Watchdog 2",
    "Platform Alert",
    "Entity Presence",
    "Monitor ASIC/IC",
    "LAN",
    "Management Subsystem Health",
    "Battery",
    "Session Audit",
    "Version Change",
    "FRU State",
});
static_assert(sensorTypeNames[watchdogSensor] == "Watchdog 2");
static_assert(sensorTypeNames[0x2C] == "FRU State");

// Event type 0Ch; the index is the state.
constexpr auto acpiPowerStates = std::to_array<std::string_view>(
    {"D0 power state", "D1 power state", "D2 power state", "D3 power state"});

constexpr std::uint8_t firstOemSensorType = 0xC0;

} // namespace

std::span<const SpecificEvent> specificEvents() {
    return events;
}

std::string sensorTypeName(std::uint8_t sensorType) {
    if (sensorType > 0 && sensorType < sensorTypeNames.size()) {
        return std::string(sensorTypeNames[sensorType]);
    }
    return fmt::format("{} {:02X}h", sensorType >= firstOemSensorType ? "OEM type" : "Type",
                       sensorType);
}

std::string_view eventText(const Record &record) {
    const unsigned state = eventOffset(record);
    if (eventTypeOf(record) == acpiPowerType && state < acpiPowerStates.size()) {
        return acpiPowerStates[state];
    }
    if (eventTypeOf(record) != sensorSpecificType) {
        return {};
    }
    const SpecificEvent key{
        record.bytes[offset::sensorType], static_cast<std::uint8_t>(state), info, {}};
    const auto found = std::lower_bound(events.begin(), events.end(), key, before);
    return found != events.end() && !before(key, *found) ? found->text : std::string_view{};
}

} // namespace zusahpi::sel
