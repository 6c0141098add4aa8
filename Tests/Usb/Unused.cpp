// What Aravis needs of libusb so that it can be loaded. Nobody calls it.
extern "C"
{
    char libusb_alloc_transfer, libusb_cancel_transfer, libusb_control_transfer, libusb_error_name,
        libusb_free_transfer, libusb_get_config_descriptor, libusb_get_device, libusb_handle_events_timeout,
        libusb_set_auto_detach_kernel_driver, libusb_submit_transfer;
}
