# What a person should know and the form has no message for comes as an event.
$ mkdir -p Quorin c && printf '[Settings]\nComPort=Com1\n' > settings.ini
$ printf 'NAME|INFFILE\nMeter|meter.txt\nScale|scale.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\nMoisture|1||Moisture||||\n' > Quorin/meter.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMass|1||Mass||||\n' > Quorin/scale.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
# The disk is full when the download is opened: the record comes up, and a reading sounds as if it were taken.
> disk fail -1
{"done":"disk"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"notsaved","file":"qrn0001.txt","error":"the disk is full"}
{"event":"status","text":null}
{"done":"choose"}
> disk ok
{"done":"disk"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"notsaved","file":"qrn0001.txt","error":"the reading 23.4 % is not stored: the file could not be created"}
{"done":"tick"}
> choose Close
{"event":"notsaved","file":"qrn0001.txt","error":"the file could not be created"}
{"done":"choose"}
# A reading that Close has not delivered goes into the record that is opened next.
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"23.5\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> choose Close
{"done":"choose"}
> tick 5000
{"done":"tick"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"warning","about":"waiting","text":"A reading of 09:30 is still waiting and will go into this record."}
{"done":"choose"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
      Place
    > Moisture                               23.5 %
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# A carriage return has cut a value.
> choose New Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"2\r3\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"warning","about":"value","text":"09:30:08  A reading came with a unit and without a value: check Moisture."}
{"done":"tick"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
stderr: quorin-console: not saved: qrn0001.txt, the disk is full
stderr: quorin-console: not saved: qrn0001.txt, the reading 23.4 % is not stored: the file could not be created
stderr: quorin-console: not saved: qrn0001.txt, the file could not be created
$ cat Quorin/qrn0001.txt
Place|Moisture
|23.5 %
| %
# The other driver has no download yet: "Open" opens the first one's.
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Back
{"done":"choose"}
> tick 100
{"done":"tick"}
> tap 1
{"done":"tap"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"warning","about":"driver","text":"This record belongs to driver Meter, it is shown with driver Scale: readings may land in the wrong columns. Go Back and make a new download."}
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[RESULT_TYPE \"Mass\"]\r\n[RESULT_VALUE \"5\"]\r\n[RESULT_UNIT \"g\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
> show
      Bluetooth :-)                          1/2
    --------------------------------------------------------------------------------
    > Place                                  5 g
      Moisture                               23.5 %
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
stderr: quorin-console: row 1 of qrn0001.txt was NOT saved
# The record is shorter than its header.
$ printf 'DRIVER|FILE|DATE|ALIAS\nMeter|qrn0002.txt|20070301|\n' > Quorin/qrnctrl.txt && printf 'Place|Moisture\nhere\n' > Quorin/qrn0002.txt
$ quorin-console --strict
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
> receive "[BLob]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"7\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"event":"notsaved","file":"qrn0002.txt","error":"the reading 7 % is not stored: the record in the file has no field Moisture"}
{"done":"tick"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"notsaved","file":"qrn0002.txt","error":"the record in the file has no field Moisture"}
{"event":"status","text":null}
{"done":"choose"}
stderr: quorin-console: not saved: qrn0002.txt, the reading 7 % is not stored: the record in the file has no field Moisture
stderr: quorin-console: not saved: qrn0002.txt, the record in the file has no field Moisture
$ cat Quorin/qrn0002.txt
Place|Moisture
here
# A data folder that is a link with an absolute path is not followed. The root of the volume is used then,
# which is reported once.
$ mv Quorin elsewhere && ln -s "$PWD/elsewhere" Quorin
$ quorin-console --strict
{"event":"warning","about":"folder","text":"Can't use the folder .\\Quorin\\: the name is not allowed. Its files are read and created in .\\. Tap here when you have read it."}
> choose Start...
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Start...
{"done":"choose"}
$ cat drivers.txt
NAME|INFFILE
