# A Symbian S60 phone. Its list of ports has no serial port, so the technician types the name of the instrument.
$ mkdir -p C/Data/Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > C/Data/Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > C/Data/Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nAcid|1||pH||||\n' > C/Data/Quorin/soil.txt
$ quorin-console --device s60 --strict
> named fail -36
{"done":"named"}
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 4
>> show
      Serial ID
    --------------------------------------------------------------------------------
      [_                                                                         ]
    --------------------------------------------------------------------------------
    [Back]                                                                      [Ok]
{"done":"show"}
>> set BT1
{"done":"set"}
>> choose Ok
{"done":"choose"}
{"done":"tap"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
# It can't be reached: this is reported once, though each tick tries again.
> tick 500
{"event":"box","text":"Failed: -36","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tick"}
> tick 5000
{"done":"tick"}
> choose Close
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Back
{"done":"choose"}
# Another name is reported again.
> choose Preferences...
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 4
>> type BT2
{"done":"type"}
>> choose Ok
{"done":"choose"}
{"done":"tap"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"event":"box","text":"Failed: -36","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tick"}
# The instrument is switched on. A connection by name is shown as open, and receives nothing.
> named ok
{"done":"named"}
> tick 500
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
    > Acid
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}

# A name that begins with "com", in any case, is a serial port on this device too.
$ sed -i 's/^ComPort=.*/ComPort=COM3/' settings.ini
$ quorin-console --device s60 --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[RESULT_TYPE \"pH\"]\r\n[RESULT_VALUE \"6.8\"]\r\n[RESULT_UNIT \"pH\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> choose New Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}

# A server beside the program can have the connection. It writes what it receives into a file on the card, "d:\".
$ quorin-console --device s60 --strict
> choose Preferences...
{"done":"choose"}
> tap 2
{"done":"tap"}
> tick 200
{"done":"tick"}
> show
      Com Port
    --------------------------------------------------------------------------------
    > OFF
      SERVER
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> tap 1
{"done":"tap"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Last Record
{"done":"choose"}
> tick 500
{"event":"box","text":"RFCOMM Server not running","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tick"}
> tick 5000
{"done":"tick"}
$ mkdir d && touch d/rfcomm.run d/ipcout.lock
$ printf '[BLob]\n[RESULT_TYPE "pH"]\n[RESULT_VALUE "7.2"]\n[RESULT_UNIT "pH"]\n[/BLob]\n' > d/ipcout.txt
# The server runs, and is still writing: nothing is read.
$ quorin-console --device s60 --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Last Record
{"done":"choose"}
> tick 5000
{"done":"tick"}
> show
      Bluetooth :-)                          2/2
    --------------------------------------------------------------------------------
    > Acid
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
$ rm d/ipcout.lock; ls d
ipcout.txt
rfcomm.run
# Now it has finished: its file is read and deleted.
$ quorin-console --device s60 --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Last Record
{"done":"choose"}
> tick 3000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ ls d; cat C/Data/Quorin/qrn0001.txt settings.ini
rfcomm.run
Acid
6.8 pH
7.2 pH
[Settings]
StorageVolume=C:\
ComPort=SERVER
