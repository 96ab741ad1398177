/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

/**
 * The camera SDK: finds GigE Vision cameras on all networks of the host, forces addresses onto them, and
 * opens them for a node map to work on.
 *
 * A C interface. Every function that returns int gives RZ_OK on success and else another RZ_ERROR code;
 * functions may be called from any thread, and at the same time. A call that has begun runs to its end even
 * when its thread is cancelled meanwhile.
 *
 * IPv4 values are in host order with the first octet in the top byte.
 */

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

#define RZ_API __attribute__((visibility("default")))

/** Bit of the transport layers' mask: GigE Vision. */
#define RZ_TL_GIGE 1u

/** Access mode: control of the camera, others may not even read. */
#define RZ_ACCESS_EXCLUSIVE 1u

/** An enumeration reports at most so many cameras. */
#define RZ_MAX_DEVICES 256

/** No longer description file is taken, in bytes. */
#define RZ_MAX_DESCRIPTION 3145728u

enum RZ_ERROR
{
    RZ_OK = 0,
    RZ_ERROR_HANDLE = 1, /**< The handle is none, or is destroyed. */
    RZ_ERROR_PARAMETER =
        2, /**< A null pointer, an address that no camera can have, an unknown transport layer. */
    RZ_ERROR_NETWORK = 3,   /**< The host's adapter is gone, or none could be used. */
    RZ_ERROR_NO_ANSWER = 4, /**< The camera is not heard any more. */
    RZ_ERROR_ACCESS_DENIED =
        5,                 /**< The camera is there and does not obey: another application controls it. */
    RZ_ERROR_REFUSED = 6,  /**< The camera answered with an error other than that. */
    RZ_ERROR_INTERNAL = 7, /**< Out of memory or the like. */
    RZ_ERROR_NOT_OPEN = 8, /**< The handle's camera is not open, or not any more. */
    RZ_ERROR_NOT_STORED =
        9, /**< An address that was forced onto the camera waits to be stored, and could not be. */
    RZ_ERROR_DESCRIPTION = 10, /**< The camera names no description file that makes sense. */
    RZ_ERROR_DESCRIPTION_ELSEWHERE =
        11,               /**< The description is a file or on a server, which a camera has no say in here. */
    RZ_ERROR_BUFFER = 12, /**< The description is longer than the buffer, or than any that is taken. */
    RZ_ERROR_OTHER_CAMERA = 13 /**< At the camera's address another one answers; it was left as it is. */
};

/** How well answers are heard that this computer's reverse-path filter or firewall keeps from ordinary
 * sockets: a program of its own, the listener, hears them, the only one that needs a privilege (CAP_NET_RAW).
 */
enum RZ_LISTENER
{
    RZ_LISTENER_HEARS = 0,        /**< All that can be heard is. */
    RZ_LISTENER_MISSING = 1,      /**< The program is not there. */
    RZ_LISTENER_FORBIDDEN = 2,    /**< This user may not run the program, or nobody. */
    RZ_LISTENER_UNPRIVILEGED = 3, /**< It may not open its socket. */
    RZ_LISTENER_FAILED = 4        /**< It did not begin to listen for another reason, or ended too often. */
};

/** What GigE Vision tells of one camera. Texts are UTF-8 and end in a NUL: what fits of them in whole
 * characters; bytes that are no UTF-8 count as Latin-1. */
typedef struct RZ_GIGE_DEVICE_INFO
{
    uint32_t nIpConfigOptions; /**< What the camera supports: bits as in nIpConfigCurrent. */
    uint32_t nIpConfigCurrent; /**< Bit 0 persistent (static) address, bit 1 DHCP, bit 2 link-local. */
    uint32_t nDeviceIp;
    uint32_t nDeviceSubnetMask;
    uint32_t nDeviceGateway;
    char szManufacturerName[32];
    char szModelName[32];
    char szDeviceVersion[32];
    char szManufacturerInfo[48];
    char szSerialNumber[16];
    char szUserDefinedName[16];
    uint32_t nNetExportIp;    /**< Address of the host adapter that heard the camera. */
    uint32_t nNetExportIndex; /**< That adapter's interface index; 0: the one that has nNetExportIp. */
    uint32_t nReserved[3];
} RZ_GIGE_DEVICE_INFO;

typedef struct RZ_CC_DEVICE_INFO
{
    uint16_t nMajorVersion; /**< Of GigE Vision, as the camera says. */
    uint16_t nMinorVersion;
    uint32_t nMacHigh;        /**< MAC bytes 1 and 2 in the low 16 bits. */
    uint32_t nMacLow;         /**< MAC bytes 3 to 6. */
    uint32_t nTransportLayer; /**< RZ_TL_GIGE. */
    uint32_t nReserved[4];
    RZ_GIGE_DEVICE_INFO stGigEInfo;
} RZ_CC_DEVICE_INFO;

/** The records belong to the SDK and stay where they are as long as the process runs: one for each camera and
 * adapter that hears it, brought up to date by every enumeration. */
typedef struct RZ_CC_DEVICE_INFO_LIST
{
    uint32_t nDeviceCount;
    RZ_CC_DEVICE_INFO* apDeviceInfo[RZ_MAX_DEVICES];
} RZ_CC_DEVICE_INFO_LIST;

/** How an answer was heard. */
enum RZ_HEARD
{
    /** By an ordinary socket, as any program hears. Of a look's answers those before its first question for a
     * register, which opens the way through a firewall. */
    RZ_HEARD_SOCKET = 1,
    RZ_HEARD_LISTENER = 2, /**< By the listener. */
    RZ_HEARD_UNICAST = 4,  /**< It was sent to this computer. */
    RZ_HEARD_BROADCAST = 8 /**< It was sent to all. */
};

/** What became of the questions for a camera's registers. */
enum RZ_REGISTERS
{
    RZ_REGISTERS_NOT_ASKED = 0, /**< The camera is outside the subnet of the adapter. */
    RZ_REGISTERS_SILENT = 1,
    RZ_REGISTERS_REFUSED = 2, /**< An application holds it exclusively. */
    RZ_REGISTERS_TOLD = 3,
    RZ_REGISTERS_OTHER_CAMERA = 4 /**< At its address another camera answers. */
};

/** Which registers a camera has told of: bits of RZ_CC_SIGHTING's nTold. An optional register is asked for
 * only when the camera says that it has it. */
enum RZ_TOLD
{
    RZ_TOLD_PRIVILEGE = 1,
    RZ_TOLD_HOLDER = 2, /**< nHolderIp and nHolderPort. */
    RZ_TOLD_HEARTBEAT_TIMEOUT = 4,
    RZ_TOLD_HEARTBEAT_OFF = 8,
    RZ_TOLD_LINK_SPEED = 16,
    RZ_TOLD_STORED = 32, /**< The three values of the stored address. */
    RZ_TOLD_STREAM = 64  /**< nStreamIp and nStreamPort. */
};

/** One camera as one adapter heard it, in one look. */
typedef struct RZ_CC_SIGHTING
{
    RZ_CC_DEVICE_INFO stInfo; /**< As it was heard in this look. */
    RZ_CC_DEVICE_INFO* pInfo; /**< Its record, as of RZ_CC_EnumDevices. A look makes one for a camera that has
                                   none yet, and changes none: others work with it. */
    uint32_t nReachable;      /**< 1: in the subnet of the adapter. */
    uint32_t nAccessible;     /**< 1: nobody controls it. */
    uint32_t nHeard;          /**< RZ_HEARD bits, of all its answers to DISCOVERY. */
    uint32_t nSearches;       /**< DISCOVERY commands that went out on the adapter. */
    uint32_t nSearchAnswers;  /**< Those of them that it answered. */
    uint32_t nQuestions;      /**< With RZ_LOOK_COUNT_LOSSES: questions to it of one datagram each, else 0. */
    uint32_t nReplies;        /**< Those of them that were answered. */
    uint32_t nRegisters;      /**< An RZ_REGISTERS. */
    uint32_t nTold;           /**< RZ_TOLD bits; what was not told is 0. */
    uint32_t nPrivilege;      /**< The register: 0 free, 1 exclusive, 2 control. */
    uint32_t nHolderIp;       /**< The application in control. */
    uint32_t nHolderPort;
    uint32_t nHeartbeatTimeout; /**< Milliseconds. */
    uint32_t nHeartbeatOff;     /**< 1: the heartbeat is switched off. */
    uint32_t nLinkSpeed;        /**< Mbit/s. */
    uint32_t nStoredIp;
    uint32_t nStoredMask;
    uint32_t nStoredGateway;
    uint32_t nStreamIp; /**< Where its first stream goes; 0 for nowhere. */
    uint32_t nStreamPort;
} RZ_CC_SIGHTING;

/** What a device said that tells of itself. */
enum RZ_ARRIVAL
{
    RZ_ARRIVAL_PROBE = 0,        /**< By ARP: it asks whether anybody has an address that it would like. */
    RZ_ARRIVAL_ANNOUNCEMENT = 1, /**< By ARP: it has an address. */
    RZ_ARRIVAL_SPEECH = 2,       /**< By ARP: it has an address, as it asks or answers for another reason. */
    RZ_ARRIVAL_DHCP = 3          /**< It asks a DHCP server for an address. */
};

typedef struct RZ_CC_ARRIVAL
{
    uint32_t nKind;         /**< An RZ_ARRIVAL. */
    uint32_t nAdapterIndex; /**< The interface index of the adapter that heard it. */
    uint32_t nMacHigh;      /**< As in RZ_CC_DEVICE_INFO. */
    uint32_t nMacLow;
    uint32_t nIp; /**< The address that it is about; 0 for none. */
} RZ_CC_ARRIVAL;

/** Options of RZ_CC_Look. */
enum RZ_LOOK
{
    RZ_LOOK_COUNT_LOSSES = 1 /**< Asks each camera in reach twenty times, to tell how many get lost. */
};

/** What a look could not see. */
typedef struct RZ_CC_LOOK_REPORT
{
    uint32_t nUnlisted;        /**< Cameras that there is no room for among so many that were forged. */
    uint32_t nListener;        /**< An RZ_LISTENER, that of the first adapter on which not all is well. */
    const char* szListener;    /**< The file of that program. */
    const char* szNotSearched; /**< As RZ_CC_GetEnumReport has it. */
} RZ_CC_LOOK_REPORT;

/** Who is told what a look finds, on the thread that looks. The pointers are valid during the call. */
typedef struct RZ_CC_LOOK_SINK
{
    void* pContext;
    /** A camera as soon as it is known whether it is accessible and what its registers tell; `isLast` is 0.
     * And each again at the end of the look, with all that there is to say then and `isLast` 1. */
    void (*pOnCamera)(void* context, const RZ_CC_SIGHTING* camera, int isLast);
    void (*pOnArrival)(void* context, const RZ_CC_ARRIVAL* arrival);
    /** At the end, also of a look that failed. */
    void (*pOnReport)(void* context, const RZ_CC_LOOK_REPORT* report);
    /** Null, or asked many times a second: other than 0 ends the look at once, with what it has. */
    int (*pIsOver)(void* context);
} RZ_CC_LOOK_SINK;

/** A part of a camera's settings: bits. */
enum RZ_SETTING
{
    /** How it obtains its address. When it is changed, the camera obtains its address anew. */
    RZ_SETTING_METHOD = 1,
    /** The address that it has now, with mask and gateway. Of a change: is forced onto it, and holds until
     * its next restart unless it is stored, too. */
    RZ_SETTING_ADDRESS = 2,
    RZ_SETTING_STORED = 4, /**< What it starts with next time, if it is static. */
    RZ_SETTING_NAME = 8    /**< Its user name. */
};

typedef struct RZ_CC_SETTINGS
{
    uint32_t nParts;    /**< RZ_SETTING bits: what of the following is meant, or known. */
    uint32_t nIpConfig; /**< Bits as in nIpConfigCurrent; the first that is set is how. */
    uint32_t nIp;
    uint32_t nSubnetMask;
    uint32_t nGateway;
    uint32_t nStoredIp;
    uint32_t nStoredMask;
    uint32_t nStoredGateway;
    char szUserDefinedName[16];
} RZ_CC_SETTINGS;

/** What one camera is to be changed to. */
typedef struct RZ_CC_CHANGE
{
    RZ_CC_DEVICE_INFO stInfo; /**< The camera, as it was heard last. */
    RZ_CC_SETTINGS stWanted;  /**< What is not meant of it stays as it is. */
    uint32_t nPatience;       /**< Milliseconds that it may take to come back from a restart. */
} RZ_CC_CHANGE;

/** What a change does to the camera, in this order: bits. */
enum RZ_STEP
{
    RZ_STEP_FORCED = 1,     /**< An address is forced onto it. */
    RZ_STEP_STORED = 2,     /**< An address is stored. */
    RZ_STEP_CONFIGURED = 4, /**< Another way to obtain its address is switched on. */
    RZ_STEP_NAMED = 8,
    RZ_STEP_RESTARTED = 16 /**< It obtains its address anew. */
};

/** How a change ended. */
typedef struct RZ_CC_CHANGE_RESULT
{
    int nError;           /**< RZ_OK: the camera was seen by its MAC to be as is wanted, all of it. */
    const char* szError;  /**< Part of a sentence, to stand behind the camera's name: what was refused, with
                               register and status, or what it is instead; empty with RZ_OK. */
    uint32_t nSteps;      /**< RZ_STEP bits: what was done, or may have been. */
    RZ_CC_SETTINGS stNow; /**< What it has now, as far as it told after all that. */
} RZ_CC_CHANGE_RESULT;

/** Who is told how changes go, on the thread that serves them. The pointers are valid during the call. */
typedef struct RZ_CC_LINE_SINK
{
    void* pContext;
    /** That step of that change is being done. */
    void (*pOnStep)(void* context, unsigned number, unsigned step);
    void (*pOnEnd)(void* context, unsigned number, const RZ_CC_CHANGE_RESULT* result);
} RZ_CC_LINE_SINK;

/** The transport layers that this SDK drives: bit 0 is RZ_TL_GIGE. */
RZ_API unsigned RZ_CC_EnumerateTls(void);

/** Asks on every IPv4 adapter for cameras, for little more than a second. No camera, or no adapter, is an
 * empty list and success; so is a list without the cameras of an adapter that could not be searched, unless
 * there is no other. */
RZ_API int RZ_CC_EnumDevices(unsigned tlMask, RZ_CC_DEVICE_INFO_LIST* list);

/** What the process's latest enumeration left out. `unlisted` gets the number of cameras that answered beyond
 * those for which the list had room. `buffer` gets the adapters that could not be searched and why, "eth1:
 * Too many open files; eth2: ...", or why the enumeration failed; cut to `bufferSize` bytes with the NUL,
 * empty when all was searched. */
RZ_API int RZ_CC_GetEnumReport(unsigned* unlisted, char* buffer, unsigned bufferSize);

/** How the listener fared in the process's latest enumeration: `state` gets an RZ_LISTENER, that of the first
 * adapter on which not all is well. `path` gets the file of the program; cut to `pathSize` bytes with the
 * NUL. */
RZ_API int RZ_CC_GetListener(unsigned* state, char* path, unsigned pathSize);

/** Opens this computer's adapters for RZ_CC_Look: those that RZ_CC_EnumDevices searches, and `count` others
 * that have no IPv4 address, by their interface indexes. Hears what devices say by ARP and as DHCP clients
 * too, where the listener can. */
RZ_API int RZ_CC_OpenLook(void** look, const unsigned* withoutAddress, unsigned count);

/**
 * Asks on all adapters for cameras as RZ_CC_EnumDevices does, but lists any number of them; asks those in
 * reach for registers that tell who holds them, all at once. Takes little more than a second, or
 * `milliseconds` if that is longer. Takes control of nothing. RZ_ERROR_NETWORK when no adapter could be
 * searched, though there are some.
 *
 * One thread at a time looks with one look; others may do anything else.
 */
RZ_API int RZ_CC_Look(void* look, unsigned options, unsigned milliseconds, const RZ_CC_LOOK_SINK* sink);

/** Closes the adapters. */
RZ_API int RZ_CC_CloseLook(void* look);

/** Names a camera that is looked for, by its MAC as in RZ_CC_DEVICE_INFO: from now on it comes first in this
 * process's enumerations, whatever else answers. */
RZ_API int RZ_CC_ExpectDevice(unsigned macHigh, unsigned macLow);

/** Whether the camera can be opened in this mode now. For a camera of a list just made this is known; else
 * the camera is asked, and one that does not answer is not accessible. */
RZ_API bool RZ_CC_IsDeviceAccessible(const RZ_CC_DEVICE_INFO* info, unsigned accessMode);

/** Why the latest RZ_CC_OpenDevice, RZ_XML_GetGenICamXML, RZ_GIGE_ForceIpEx or RZ_GIGE_GetPersistentIp on
 * this camera failed, whichever thread called it: part of a sentence, to stand behind the camera's name.
 * Empty when it succeeded, or when there is no more to say than its error code does. Cut to `bufferSize`
 * bytes with the NUL. */
RZ_API int RZ_CC_GetErrorText(const RZ_CC_DEVICE_INFO* info, char* buffer, unsigned bufferSize);

/** Makes a handle for the camera as `info` says it now; does not talk to the camera. */
RZ_API int RZ_CC_CreateHandle(void** handle, const RZ_CC_DEVICE_INFO* info);

/** Gives the camera back, should it be open. */
RZ_API int RZ_CC_DestroyHandle(void* handle);

/**
 * Takes exclusive control of the camera (RZ_ACCESS_EXCLUSIVE; the switch-over key must be 0) and keeps it for
 * as long as the handle lives, on a thread of the SDK's own. Fails within 3 seconds when the camera is
 * silent; one onto which this process has just forced an address gets 6.
 *
 * The camera is asked for its MAC, now, before each write, and all the while: should another one answer at
 * its address, that gets control back and nothing else. An address that waits to be stored
 * (RZ_GIGE_IsForcedIpWaiting) is stored, or the call fails.
 *
 * Within a process the latest comes first: when another handle has the camera open, that one loses it. And
 * control ends with the thread that took it, however that thread ends.
 */
RZ_API int RZ_CC_OpenDevice(void* handle, unsigned accessMode, unsigned short switchoverKey);

/**
 * Fetches the open camera's description file into `buffer`: plain or zipped, as the camera has it. A file
 * that lacks some of the features GevCurrentIPConfigurationPersistentIP, GevCurrentIPConfigurationDHCP,
 * DeviceUserID and DeviceReset, although every camera has what they are about, gets them added, and a
 * DeviceUserID that is a String over a string register becomes that register, so that it can be written as
 * bytes. On a camera that was heard on another network interface than its first one, the two booleans are
 * those of that interface. A file that is changed so is then plain; if it does not fit the buffer, it stays
 * as it is.
 *
 * `dataLength` gets the number of bytes; with RZ_ERROR_BUFFER how many there would be, or 0 when they are
 * more than RZ_MAX_DESCRIPTION.
 */
RZ_API int RZ_XML_GetGenICamXML(void* handle, unsigned char* buffer, unsigned bufferSize,
                                unsigned* dataLength);

/** The open camera's port, a GenApi::IPort*; null when the camera is not open. It is valid until the handle
 * is destroyed or opened anew; when the camera is lost, its calls throw. Any thread. */
RZ_API void* RZ_CC_GetTlProxy(void* handle);

/**
 * Gives the camera these addresses: done when it acknowledges or is found at the new address, with whatever
 * mask and gateway it makes of them. The camera is known by its MAC alone. A handle of this process that has
 * it open loses it.
 *
 * The addresses hold until the camera's next reset. If it starts with a stored address (bit 0 of its current
 * configuration) they are stored too, now or, when that cannot be done yet, when it is next opened; else when
 * that bit is set through the port of a handle of this process. Stored is the address of that network
 * interface of the camera which has the record's MAC.
 *
 * A camera may leave the network for some seconds while it changes: takes at most 9 seconds, and 6 more for a
 * camera that does not answer at its new address.
 */
RZ_API int RZ_GIGE_ForceIpEx(void* handle, unsigned ip, unsigned subnetMask, unsigned gateway);

/** Whether an address that this process has forced onto the camera ought to be stored and is not yet. */
RZ_API bool RZ_GIGE_IsForcedIpWaiting(const RZ_CC_DEVICE_INFO* info);

/** Reads the address that the camera has stored to start with. The handle need not be open; no control is
 * taken. */
RZ_API int RZ_GIGE_GetPersistentIp(void* handle, unsigned* ip, unsigned* subnetMask, unsigned* gateway);

/** Opens this computer's adapters for changes of many cameras side by side. */
RZ_API int RZ_CC_OpenLine(void** line);

/**
 * Begins a change, and returns at once; RZ_CC_ServeLine does the work. `number` gets what it is called there:
 * 1, 2, 3 ... A change asks the camera for its MAC first and writes only under control, only what is not so
 * already; forces, stores, switches, names, gives control back, restarts, and looks at all of it again. It
 * needs no description: it goes by the standard's own registers. A change that fails leaves what was done by
 * then; to put a camera back is another change. A handle of this process that has the camera open loses it.
 */
RZ_API int RZ_CC_BeginChange(void* line, const RZ_CC_CHANGE* change, unsigned* number);

/** Does what is due in all changes that have begun, for `milliseconds` at most. Returns earlier as soon as
 * one has ended, and at once when none is under way. */
RZ_API int RZ_CC_ServeLine(void* line, unsigned milliseconds, const RZ_CC_LINE_SINK* sink);

/** Closes the adapters. Changes under way end where they are: their cameras let go by their own time-outs.
 * One thread at a time works with one line; others may do anything else. */
RZ_API int RZ_CC_CloseLine(void* line);

#ifdef __cplusplus
} /* extern "C" */

static_assert(sizeof(RZ_GIGE_DEVICE_INFO) == 216);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nIpConfigOptions) == 0);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nIpConfigCurrent) == 4);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nDeviceIp) == 8);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nDeviceSubnetMask) == 12);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nDeviceGateway) == 16);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szManufacturerName) == 20);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szModelName) == 52);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szDeviceVersion) == 84);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szManufacturerInfo) == 116);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szSerialNumber) == 164);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, szUserDefinedName) == 180);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nNetExportIp) == 196);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nNetExportIndex) == 200);
static_assert(offsetof(RZ_GIGE_DEVICE_INFO, nReserved) == 204);

static_assert(sizeof(RZ_CC_DEVICE_INFO) == 248);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nMajorVersion) == 0);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nMinorVersion) == 2);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nMacHigh) == 4);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nMacLow) == 8);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nTransportLayer) == 12);
static_assert(offsetof(RZ_CC_DEVICE_INFO, nReserved) == 16);
static_assert(offsetof(RZ_CC_DEVICE_INFO, stGigEInfo) == 32);

static_assert(sizeof(RZ_CC_DEVICE_INFO_LIST) == 2056);
static_assert(offsetof(RZ_CC_DEVICE_INFO_LIST, nDeviceCount) == 0);
static_assert(offsetof(RZ_CC_DEVICE_INFO_LIST, apDeviceInfo) == 8);

static_assert(sizeof(RZ_CC_SIGHTING) == 336);
static_assert(sizeof(RZ_CC_ARRIVAL) == 20);
#endif
