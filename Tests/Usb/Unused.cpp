// What Aravis needs of libusb so that it can be loaded. Nobody calls it.

#include <cstdlib>

#define UNUSED(function)                                                                                               \
    extern "C" void function()                                                                                         \
    {                                                                                                                  \
        std::abort();                                                                                                  \
    }

UNUSED(libusb_alloc_transfer)
UNUSED(libusb_cancel_transfer)
UNUSED(libusb_control_transfer)
UNUSED(libusb_error_name)
UNUSED(libusb_free_transfer)
UNUSED(libusb_get_config_descriptor)
UNUSED(libusb_get_device)
UNUSED(libusb_handle_events_timeout)
UNUSED(libusb_set_auto_detach_kernel_driver)
UNUSED(libusb_submit_transfer)
