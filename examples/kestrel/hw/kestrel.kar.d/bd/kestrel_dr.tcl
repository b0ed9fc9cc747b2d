# Rebuilds the block design of the dynamic region.
create_bd_design kestrel_dr
