#!/usr/bin/python3
"""device.py PORT: a Modbus TCP device on pymodbus with 32 addresses a table, for tests. Each write is a line on standard
output, "coil ADDRESS VALUE…" or "register ADDRESS VALUE…". Coils are wired to the discrete inputs, holding to input
registers."""
import sys

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server import StartTcpServer

SIZE = 32


class Outputs(ModbusSequentialDataBlock):
    def __init__(self, name, inputs):
        super().__init__(0, [0] * SIZE)
        self.name, self.inputs = name, inputs

    def setValues(self, address, values):
        super().setValues(address, values)
        self.inputs.setValues(address, values)
        print(self.name, address, *((int(value) + 0x8000) % 0x10000 - 0x8000 for value in values), flush=True)


bits, words = (ModbusSequentialDataBlock(0, [0] * SIZE) for _ in range(2))
device = ModbusSlaveContext(co=Outputs("coil", bits), di=bits, hr=Outputs("register", words), ir=words, zero_mode=True)
# With an address in use a restarted device would not come up while connections of the one before linger.
StartTcpServer(context=ModbusServerContext(slaves=device, single=True), address=("127.0.0.1", int(sys.argv[1])),
               allow_reuse_address=True)
