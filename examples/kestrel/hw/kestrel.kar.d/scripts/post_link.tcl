# Runs after system linking.
set_property HDL_ATTRIBUTE.DEBUG false [get_bd_intf_nets *]
