# Checks can be made in the field. "Debug" of the preferences shows a text before and after a piece of it was replaced.
$ printf '[Settings]\nComPort=Com1\n' > settings.ini
$ quorin-console
> choose Preferences...
{"done":"choose"}
> tick 100
{"done":"tick"}
> tap 5
{"event":"box","text":"this is a-a-a-a string","buttons":"ok","icon":"none","title":"Quorin"}
>> show
      Preferences
    ---------------------------+------------------------+---------------------------
      Zoom                     | this is a-a-a-a string |
      Select Storage Volume... |                        |
      Bluetooth Serial Setup...|         [ Ok ]         |
      Toggle Colour: On        +------------------------+
      Enter Custom Serial ID...
    > Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
>> answer ok
{"done":"answer"}
{"event":"box","text":"this is a very long string","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tap"}
> choose Back
{"done":"choose"}
# "Bluetooth Debug..." opens the port without a driver and lists what comes, so that a driver can be written from it:
# the types of each result, its variables, of which the first is the sender, and its value.
> choose Bluetooth Debug...
{"done":"choose"}
> tick 500
{"done":"tick"}
> show
      Bluetooth :-)
    --------------------------------------------------------------------------------
    >
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> receive "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[DESCRIPTIVE_VAR \"Plot=A1\"]\r\n[RESULT_TYPE \"pH\" \"Acid\"]\r\n[RESULT_VALUE \"6.8\"]\r\n[RESULT_UNIT \"pH\"]\r\n[RESULT_TYPE \"Depth\"]\r\n[RESULT_VALUE \"30\"]\r\n[RESULT_UNIT \"cm\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1000
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":null}
{"done":"tick"}
> screen
{"screen":"ScrBluetoothDebug","previous":"ScrMain","title":{"visible":true,"cells":[["Bluetooth :-)"]],"widths":[640],"heights":[17],"box":[0,0,640,17]},"grid":{"visible":true,"enabled":true,"row":10,"col":0,"top":0,"cells":[["RT: pH"],["RT: Acid"],["DV: ORIGIN=QI-0001"],["DV: Plot=A1"],["6.8 pH"],["---"],["RT: Depth"],["DV: ORIGIN=QI-0001"],["DV: Plot=A1"],["30 cm"],["---"]],"widths":[638],"heights":[17,17,17,17,17,17,17,17,17,17,17],"box":[0,16,640,464],"font":["Tahoma",8]},"menus":[{"caption":"Back","visible":true,"enabled":true,"items":["Back"]},{"caption":"","visible":false,"enabled":true,"items":[]}],"input":null,"status":null,"focus":"grdMain","form":[0,0,640,480]}
{"done":"screen"}
# Back releases the link, and the next tick closes the port. Nothing was stored.
> choose Back
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n"
{"done":"receive","error":"no simulated port is open"}
$ find * | LC_ALL=C sort
Quorin
settings.ini

# The screen that checks the files is in no menu; a command opens it. The check fails as it must: there is no line 10 when a
# line is to be inserted after it. The line before line 2 was inserted.
$ quorin-console
> command File Debug...
{"done":"command"}
> tick 100
{"done":"tick"}
> show
      File Debug
    --------------------------------------------------------------------------------
    > File Selector...
      Dir...
      Save sample Text File
      Load sample Text File
      Debug
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
> tap 4
{"event":"box","text":"path=.\\Quorin\\","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"box","text":"FH1.valid=-1","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"box","text":"LineCount=10","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"box","text":"Insert(s) Failed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tap"}
> tap 0
{"event":"box","text":"MenuEvent: ERROR Menu does not exist: File Selector...","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tap"}
> tap 2
{"event":"box","text":"sample.txt created","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"done":"tap"}
> tap 3
{"done":"tap"}
> tick 100
{"done":"tick"}
> show
      View Text File
    --------------------------------------------------------------------------------
    > Sample.txt
    
      Created at 05/03/2007 09:30:00
      On Device type # 0
      Device Version: 5.2
      User=user
    --------------------------------------------------------------------------------
    [Back]
{"done":"show"}
$ sqlite3 Databases/test.sqlite 'SELECT LineNumber, LineData FROM TEXT'
1|This is Line 1
2|Inserted before 2
3|This is Line 2
4|A brand new line 3!
5|This is Line 4
6|This is Line 6
7|This is Line 7
8|This is Line 8
9|This is Line 9
10|This is Line 10
